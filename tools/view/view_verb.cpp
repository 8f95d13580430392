#include "exporter.h"
#include "gltf_writer.h"
#include "page.h"
#include "page_data.h"
#include "validate.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/output_names.h"
#include "tools/common/paths.h"
#include "tools/common/problems.h"
#include "tools/common/save_file.h"
#include "tools/common/text.h"
#include "tools/verbs.h"

#include "zlmim/model/text.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <utility>
#include <variant>

namespace ZLMIM::Tools
{
namespace
{

struct CommandLine
{
    std::string Path;
    std::string Output;
    std::string Poses = "parent";
    bool IsVFlipped = false;
};

int Complain(const CommandLine& line, const std::string& what)
{
    std::cerr << "zlmim view: " << line.Path << ": " << what << '\n';
    return kBadInput;
}

void CheckOutput(const std::string& output)
{
    const std::u16string name = LowerCase(FromUtf8(output).value_or(FromWindows1252(output)));
    if (!output.empty() && !name.ends_with(u".html") && !name.ends_with(u".htm"))
        throw UsageError("-o: '" + output + "' must end in .html");
}

int MakePage(const CommandLine& line)
{
    CheckOutput(line.Output);
    const auto names = std::make_shared<PathResolver>();
    const auto found = FindInput(FileName(line.Path), *names);
    if (const auto* const why = std::get_if<std::string>(&found))
        return Complain(line, *why);
    const auto& input = std::get<Input>(found);
    if (input.Kind == Kind::Anim)
        return Complain(line, "an animation by itself can't be shown; give the asset's config.txt");

    const Asset asset = LoadAsset(input, names);
    View::Subject subject = {asset, ShownFile(input.Name), {}, Validate::Validate({.Paths = {line.Path}})};
    for (const Problem& problem : FindProblems(asset, input, names))
        subject.Problems.push_back(Text(problem));
    Export::Repairs repairs;
    Export::Document document = Export::ToGltf(
        asset,
        {.IsVFlipped = line.IsVFlipped, .Poses = line.Poses == "mesh" ? PoseBase::Mesh : PoseBase::Parent},
        *names, repairs);
    for (std::string& repair : repairs.Lines())
        subject.Problems.push_back(std::move(repair));

    const std::string data = View::PageData(subject, document);
    View::NumberNodes(document);
    const std::string model = ToGlb(document);
    // In the page each three bytes are four characters, and browsers have no texts of more than 2^29.
    constexpr std::size_t kMostBytes = 400'000'000;
    if (model.size() > kMostBytes)
        return Complain(line, "it is too large for browsers: " + Bytes(model.size()) + " of at most " +
                                  Bytes(kMostBytes));
    const std::filesystem::path output =
        line.Output.empty() ? OutputNames(".html").Add(StemOf(line.Path)) : FromUtf8Path(line.Output);
    SaveFile(output, [&](std::ostream& out) { View::WritePage(data, model, out); });
    std::cout << ToUtf8Path(output) << '\n';
    for (const std::string& problem : subject.Problems)
        Complain(line, problem);
    return subject.Problems.empty() ? kGood : kBadInput;
}

} // namespace

Verb ViewVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {
        "view",
        "write a page that shows an asset in a browser",
        "Writes an HTML page that shows a mesh (.im) or an asset (config.txt) in three dimensions, with its "
        "animations, what its files hold and what is wrong with them, and prints the page's name. The page "
        "is one file, and needs no network: open it in a browser.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Path},
         {"-o,--output", "FILE",
          "the page to write; by default named after the asset's folder or the mesh, in the working folder",
          &line->Output},
         {"--flip-v", "", "take texture coordinates as u and 1 - v: for textures that come out upside down",
          &line->IsVFlipped},
         {"--poses",
          "BASE",
          "what bones' poses are relative to: parent (the parent bone, the default) or mesh",
          &line->Poses,
          {"parent", "mesh"}}},
        {{"Examples",
          {"zlmim view wagon\tthe asset in the folder wagon, as wagon.html",
           "zlmim view wagon/body.im -o body.html\tone mesh"}},
         {"Exit status",
          {"0\tthe page shows everything as it is, whether or not it lists findings",
           "1\tthe file is missing or damaged, or something of it can't be shown; the page, if there is "
           "one, shows the rest and lists what is wrong",
           "2\tthe command line is wrong, or the page can't be written"}}},
        [line] { return MakePage(*line); }};
}

} // namespace ZLMIM::Tools
