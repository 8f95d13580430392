#include "exporter.h"
#include "gltf_writer.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/output_names.h"
#include "tools/common/parallel.h"
#include "tools/common/paths.h"
#include "tools/common/problems.h"
#include "tools/common/progress_bar.h"
#include "tools/picture/sheet.h"
#include "tools/verbs.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <variant>

namespace ZLMIM::Tools
{
namespace
{

namespace fs = std::filesystem;

struct CommandLine
{
    std::vector<std::string> Paths;
    std::string Output;
    std::string Up = "z";
    std::optional<double> Scale;
    std::string Poses = "parent";
    bool IsVFlipped = false;
    bool IsRecursive = false;
};

Export::Options OptionsOf(const CommandLine& line)
{
    const auto scale = static_cast<float>(line.Scale.value_or(1));
    if (!std::isnormal(scale) || scale < 0)
        throw UsageError("--scale must be more than 0");
    return {line.Up == "z" ? Export::UpAxis::Z : Export::UpAxis::Y, scale, line.IsVFlipped,
            line.Poses == "mesh" ? PoseBase::Mesh : PoseBase::Parent};
}

/// An asset, and the file that it goes to.
struct Task
{
    std::string Path;
    fs::path Output;
};

/// What became of a task.
struct Report
{
    bool IsWritten = false;
    std::vector<std::string> Complaints;
};

Report ExportOne(const Task& task, const Export::Options& options)
{
    Report report;
    const auto names = std::make_shared<PathResolver>();
    const auto input = FindInput(FileName(task.Path), *names);
    if (const auto* const why = std::get_if<std::string>(&input))
    {
        report.Complaints.push_back(*why);
        return report;
    }
    if (std::get<Input>(input).Kind == Kind::Anim)
    {
        report.Complaints.emplace_back(
            "an animation by itself can't be exported; give the asset's config.txt");
        return report;
    }
    Export::Repairs repairs;
    Export::Document document;
    {
        // Gone before the file is written, with all that the document doesn't refer to.
        const Asset asset = LoadAsset(std::get<Input>(input), names);
        for (const Problem& problem : FindProblems(asset, std::get<Input>(input), names))
            report.Complaints.push_back(Text(problem));
        document = Export::ToGltf(asset, options, *names, repairs);
    }
    for (std::string& line : repairs.Lines())
        report.Complaints.push_back(std::move(line));
    constexpr std::size_t kOnlyRoot = 1;
    if (document.Nodes.size() == kOnlyRoot)
    {
        report.Complaints.emplace_back("there is nothing to export");
        return report;
    }
    try
    {
        Save(document, task.Output);
        report.IsWritten = true;
    }
    catch (const std::length_error& error)
    {
        report.Complaints.emplace_back(error.what());
    }
    return report;
}

std::vector<Task> TasksFor(const CommandLine& line)
{
    std::vector<Task> tasks;
    OutputNames outputs(".glb");
    const fs::path output = FromUtf8Path(line.Output);
    for (const std::string& path : line.Paths)
    {
        if (!line.IsRecursive)
        {
            tasks.push_back({path, line.Output.empty() ? outputs.Add(StemOf(path)) : output});
            continue;
        }
        const fs::path folder = ToPath(ToNativePath(FileName(path)));
        const auto configs = Picture::AssetsBelow(FileName(path));
        for (const std::string& config : configs)
        {
            const fs::path asset = FromUtf8Path(config).parent_path().lexically_relative(folder);
            tasks.push_back({config, outputs.Add(output / (asset == "." ? StemOf(path) : asset))});
        }
        if (configs.empty()) // which gives a complaint
            tasks.push_back({path, outputs.Add(output / StemOf(path))});
    }
    return tasks;
}

void CheckOutput(const CommandLine& line)
{
    if (line.IsRecursive)
    {
        if (line.Output.empty())
            throw UsageError("-r needs -o with the folder to write to");
        return;
    }
    const std::u16string ending = LowerCase(ToName(FromUtf8Path(line.Output).extension()));
    if (!line.Output.empty() && ending != u".glb" && ending != u".gltf")
        throw UsageError("-o: '" + line.Output + "' must end in .glb or .gltf");
    if (line.Paths.size() > 1 && !line.Output.empty())
        throw UsageError("-o names one file, but there are several PATHs; leave it out, or use -r");
}

int ExportAll(const CommandLine& line)
{
    const Export::Options options = OptionsOf(line);
    CheckOutput(line);
    const std::vector<Task> tasks = TasksFor(line);
    std::vector<Report> reports(tasks.size());
    ProgressBar bar;
    std::mutex mutex;
    std::size_t done = 0;
    ForEach(tasks.size(), std::max(std::thread::hardware_concurrency(), 1U),
            [&](std::size_t i, std::size_t)
            {
                reports[i] = ExportOne(tasks[i], options);
                const std::lock_guard lock(mutex);
                if (tasks.size() > 1)
                    bar.Show(++done, tasks.size());
            });
    int status = kGood;
    for (std::size_t i = 0; i < tasks.size(); ++i)
    {
        for (const std::string& complaint : reports[i].Complaints)
        {
            std::cerr << "zlmim export: " << tasks[i].Path << ": " << complaint << '\n';
            status = kBadInput;
        }
        if (reports[i].IsWritten)
            std::cout << ToUtf8Path(tasks[i].Output) << '\n';
    }
    return status;
}

} // namespace

Verb ExportVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {
        "export",
        "write meshes and assets as glTF",
        "Writes each mesh (.im) and asset (config.txt) as a glTF 2.0 file, for other programs, and prints "
        "the file's name. An asset is written with its textures and animations, with what hangs on its "
        "attachment points, and with its bogeys and pantograph.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Paths},
         {"-o,--output", "FILE",
          "the file to write: .glb, one file with everything in it, or .gltf, with its other files beside "
          "it; by "
          "default a .glb named after the asset's folder or the mesh, in the working folder; with -r a "
          "folder",
          &line->Output},
         {"-r,--recursive", "",
          "write every asset in folders and below, each into a .glb of its folder's name",
          &line->IsRecursive},
         {"--up",
          "AXIS",
          "the asset's axis that is up: z (the default; the root node turns it to glTF's y), or y (nothing "
          "is turned)",
          &line->Up,
          {"z", "y"}},
         {"--scale", "FACTOR", "metres of a unit (default: 1)", &line->Scale},
         {"--flip-v", "", "write texture coordinates as u and 1 - v: for textures that come out upside down",
          &line->IsVFlipped},
         {"--poses",
          "BASE",
          "what bones' poses are relative to: parent (the parent bone, the default) or mesh",
          &line->Poses,
          {"parent", "mesh"}}},
        {{"Examples",
          {"zlmim export wagon\tthe asset in the folder wagon, as wagon.glb",
           "zlmim export wagon/body.im -o body.gltf\tone mesh, as body.gltf and body.bin with its pictures",
           "zlmim export -r assets -o out\tall assets in the folder assets and below"}},
         {"Repairs",
          {"What glTF doesn't allow is repaired or skipped: normals and rotations that aren't of unit "
           "length, infinite and undefined numbers, indices out of range, empty chunks. A line on standard "
           "error names each."}},
         {"Exit status",
          {"0\teverything was written as it is",
           "1\ta file is missing or damaged, or something was repaired or skipped; the rest was written",
           "2\tthe command line is wrong, or a file can't be written"}}},
        [line] { return ExportAll(*line); }};
}

} // namespace ZLMIM::Tools
