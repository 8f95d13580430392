#include "output.h"
#include "validate.h"

#include "tools/common/progress_bar.h"
#include "tools/verbs.h"

#include <iostream>
#include <memory>

namespace ZLMIM::Tools
{
namespace
{

struct CommandLine
{
    Validate::Request Request;
    bool IsJson = false;
};

int Run(CommandLine& commandLine)
{
    ProgressBar bar;
    commandLine.Request.OnProgress = [&bar](std::size_t done, std::size_t all) { bar.Show(done, all); };
    const Validate::Result result = Validate::Validate(commandLine.Request);
    if (commandLine.IsJson)
        Validate::WriteJson(result, std::cout);
    else
        Validate::WriteText(result, std::cout);
    return result.Findings.empty() ? kGood : kBadInput;
}

Section Codes()
{
    Section section = {"Codes", {}};
    for (const Validate::CodeInfo& info : Validate::Codes())
        section.Paragraphs.push_back(std::string(info.Name) + "\t" + std::string(Name(info.Severity)) + ": " +
                                     std::string(info.Meaning));
    return section;
}

} // namespace

Verb ValidateVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {
        "validate",
        "say what is wrong with assets, and where",
        "Checks assets (config.txt) with all their files, meshes (.im) and animations (.kin), and prints one "
        "line for each finding. An asset is loaded as by a program that works in the asset's folder.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Request.Paths},
         {"-r,--recursive", "", "check every config.txt, .im and .kin in folders and below",
          &line->Request.IsRecursive},
         {"--json", "", "print the findings as JSON", &line->IsJson}},
        {{"Numbers",
          {"Chunks, textures, bones, face normals and lines count from 1; vertices, normals, indices, "
           "triangles and slots from 0."}},
         Codes(),
         {"Exit status",
          {"0\tnothing was found", "1\tsomething was found",
           "2\tthe command line is wrong, or the output can't be written"}}},
        [line] { return Run(*line); }};
}

} // namespace ZLMIM::Tools
