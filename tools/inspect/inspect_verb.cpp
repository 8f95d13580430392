#include "json.h"
#include "tree.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/paths.h"
#include "tools/common/problems.h"
#include "tools/common/terminal.h"
#include "tools/common/text.h"
#include "tools/verbs.h"

#include <chrono>
#include <iostream>
#include <memory>

namespace ZLMIM::Tools
{
namespace
{

struct CommandLine
{
    std::vector<std::string> Paths;
    bool IsJson = false;
    bool IsAsGiven = false;
    bool IsVerbose = false;
    bool HasStats = false;
};

int PrintAsGiven(const std::string& path)
{
    const Asset asset = LoadAsGiven(FileName(path));
    Inspect::WriteJson(asset, std::cout);
    std::cout << '\n';
    return asset.Outcome.IsLoaded ? kGood : kBadInput;
}

/// Prints one file. Returns the exit status.
int Print(const std::string& path, const CommandLine& commandLine, const Inspect::TreeForm& form)
{
    const auto names = std::make_shared<PathResolver>();
    const auto input = FindInput(FileName(path), *names);
    if (const auto* const why = std::get_if<std::string>(&input))
    {
        std::cout.flush();
        std::cerr << "zlmim inspect: " << (path.empty() ? "''" : path) << ": " << *why << '\n';
        return kBadInput;
    }
    const auto before = std::chrono::steady_clock::now();
    const Asset asset = LoadAsset(std::get<Input>(input), names);
    const std::chrono::duration<float, std::milli> time = std::chrono::steady_clock::now() - before;
    const auto problems = FindProblems(asset, std::get<Input>(input), names);
    if (commandLine.IsJson)
    {
        Inspect::WriteJson(asset, std::cout);
        std::cout << '\n';
        if (!problems.empty())
            std::cout.flush();
        for (const Problem& problem : problems)
            std::cerr << "zlmim inspect: " << Text(problem) << '\n';
    }
    else
    {
        std::cout << Inspect::TreeText(std::get<Input>(input), asset, problems, form, *names);
    }
    if (commandLine.HasStats)
    {
        std::cout.flush();
        std::cerr << ShownFile(std::get<Input>(input).Name) << ": loaded in " << Decimal(time.count())
                  << " ms; " << Bytes(PeakMemory()) << " of memory used at most\n";
    }
    return asset.Outcome.IsLoaded && problems.empty() ? kGood : kBadInput;
}

int Run(const CommandLine& commandLine)
{
    if (commandLine.IsAsGiven && !commandLine.IsJson)
        throw UsageError("--as-given needs --json");
    const Inspect::TreeForm form = {OutputWidth(), commandLine.IsVerbose, IsOutputColoured()};
    int status = kGood;
    for (const std::string& path : commandLine.Paths)
    {
        if (!commandLine.IsJson && path != commandLine.Paths.front())
            std::cout << '\n';
        status =
            std::max(status, commandLine.IsAsGiven ? PrintAsGiven(path) : Print(path, commandLine, form));
    }
    return status;
}

} // namespace

Verb InspectVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {
        "inspect",
        "show what files hold, as a tree or as JSON",
        "Shows what meshes (.im), animations (.kin) and assets (config.txt) hold. An asset is shown with its "
        "meshes and animations and with the assets that it refers to.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Paths},
         {"-v,--verbose", "", "list the materials and textures of an asset's meshes", &line->IsVerbose},
         {"--stats", "", "print the load time and the memory used, on standard error", &line->HasStats},
         {"--json", "", "print every property, as one JSON object a line", &line->IsJson},
         {"--as-given", "",
          "with --json: load PATH as it is given, relative to the working folder, like a program that "
          "works there",
          &line->IsAsGiven}},
        {{"Examples",
          {"zlmim inspect wagon\tthe asset in the folder wagon",
           "zlmim inspect wagon/body.im\tone of its meshes"}},
         {"Environment", {"NO_COLOR\tif set, the tree has no colours"}},
         {"Exit status",
          {"0\tevery file was read",
           "1\tsomething is missing or broken: a file, an asset referred to, or what a mesh hangs on",
           "2\tthe command line is wrong, or the output can't be written"}}},
        [line] { return Run(*line); }};
}

} // namespace ZLMIM::Tools
