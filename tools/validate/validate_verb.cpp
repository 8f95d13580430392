#include "output.h"
#include "report_page.h"
#include "spelling.h"
#include "validate.h"

#include "tools/common/arguments.h"
#include "tools/common/parallel.h"
#include "tools/common/paths.h"
#include "tools/common/progress_bar.h"
#include "tools/common/save_file.h"
#include "tools/common/terminal.h"
#include "tools/picture/thumbnail.h"
#include "tools/verbs.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <thread>

namespace ZLMIM::Tools
{
namespace
{

struct CommandLine
{
    Validate::Request Request;
    std::vector<std::string> Ignored;
    std::vector<std::string> Only;
    std::string Format = "text";
    std::string Page;
    bool IsJson = false;
    bool IsStrict = false;
};

std::set<Validate::Code> FindCodes(const std::vector<std::string>& names)
{
    std::set<Validate::Code> codes;
    for (const std::string& name : names)
    {
        const auto code = Validate::FindCode(name);
        if (!code)
        {
            std::vector<std::u16string> known;
            for (const Validate::CodeInfo& info : Validate::Codes())
                known.emplace_back(info.Name.begin(), info.Name.end());
            throw UsageError("there is no code '" + name + "'" +
                             Validate::DidYouMean(FromWindows1252(name), known));
        }
        codes.insert(*code);
    }
    return codes;
}

void SavePage(const std::string& path, const Validate::Result& result)
{
    constexpr int kWidth = 480;
    constexpr int kHeight = 320;
    std::vector<std::string> pictures(result.Configs.size());
    ForEach(pictures.size(), std::max(std::thread::hardware_concurrency(), 1U),
            [&](std::size_t i, std::size_t)
            { pictures[i] = Picture::Thumbnail(FileName(ToUtf8(result.Configs[i])), kWidth, kHeight); });
    SaveFile(FromUtf8Path(path), [&](std::ostream& out) { Validate::WritePage(result, pictures, out); });
}

int Run(CommandLine& commandLine)
{
    Validate::Request& request = commandLine.Request;
    request.Ignored = FindCodes(commandLine.Ignored);
    request.Only = FindCodes(commandLine.Only);
    ProgressBar bar;
    request.OnProgress = [&bar](std::size_t done, std::size_t all) { bar.Show(done, all); };
    const Validate::Result result = Validate::Validate(request);
    if (commandLine.IsJson || commandLine.Format == "json")
        Validate::WriteJson(result, std::cout);
    else if (commandLine.Format == "line")
        Validate::WriteLines(result, std::cout);
    else
        Validate::WriteText(result, std::cout, IsOutputColoured());
    if (!commandLine.Page.empty())
        SavePage(commandLine.Page, result);
    const Validate::Counts counts = Count(result);
    return counts.Errors + (commandLine.IsStrict ? counts.Warnings : 0) == 0 ? kGood : kBadInput;
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
        "Checks assets (config.txt) with the meshes (.im), animations (.kin) and textures that they use "
        "and the "
        "assets that they refer to. Prints one line for each finding, and a summary. An asset is loaded "
        "as by a "
        "program that works in the asset's folder.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Request.Paths},
         {"-r,--recursive", "", "check every config.txt, .im and .kin in folders and below",
          &line->Request.IsRecursive},
         {"--ignore", "CODE", "don't report findings of this code; may be repeated", &line->Ignored},
         {"--only", "CODE", "report only findings of this code; may be repeated", &line->Only},
         {"--strict", "", "let warnings count for the exit status too", &line->IsStrict},
         {"--format",
          "FORMAT",
          "text (the default), json, or line: 'file:line: severity: message [code]', for editors",
          &line->Format,
          {"text", "json", "line"}},
         {"--json", "", "the same as --format=json", &line->IsJson},
         {"--report", "FILE", "also write an HTML page with the findings and a picture of each asset",
          &line->Page}},
        {{"Examples",
          {"zlmim validate wagon\tthe asset in the folder wagon, and those that it refers to",
           "zlmim validate -r .\tall assets below the working folder",
           "zlmim validate -r --ignore=texture-missing --strict .\tthe same for a script: any finding but of "
           "that code fails"}},
         {"Numbers",
          {"Chunks, textures, bones, attachment points, face normals and lines count from 1; vertices, "
           "normals, indices, triangles and slots from 0."}},
         Codes(),
         {"Environment", {"NO_COLOR\tif set, the text has no colours"}},
         {"Exit status",
          {"0\tnothing was found, or only warnings", "1\terrors were found, or warnings with --strict",
           "2\tthe command line is wrong, or the output can't be written"}}},
        [line] { return Run(*line); }};
}

} // namespace ZLMIM::Tools
