#include "output.h"
#include "progress_bar.h"
#include "validate.h"

#include "examples/command_line.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace
{

using namespace ZLMIM::Validate;

constexpr int kFound = 1;
constexpr int kWrongCommandLine = 2;

std::string Footer()
{
    std::string text =
        "A path that leads to nothing is a finding. Assets are judged as by a host that works in their "
        "folder.\nChunks, textures, bones and face normals count from 1, as do lines; vertices, "
        "normals, indices, triangles and slots from 0.\n"
        "--json prints one object: \"files\" (how many were judged), \"errors\", \"warnings\", and "
        "\"findings\", a list of objects with \"file\", \"place\", \"severity\", \"code\" and "
        "\"message\".\n\nCodes:\n";
    for (const CodeInfo& info : Codes())
    {
        std::string line = "  ";
        line += info.Name;
        line.resize(23, ' ');
        line += Name(info.Severity);
        line.resize(32, ' ');
        (text += line += info.Meaning) += '\n';
    }
    return text + "\nExit status: 0 if nothing was found, 1 if something was, 2 for a wrong command line.";
}

int Run(Request& request, bool isJson)
{
    ProgressBar bar;
    request.OnProgress = [&bar](std::size_t done, std::size_t all) { bar.Show(done, all); };
    const Result result = Validate(request);
    if (isJson)
        WriteJson(result, std::cout);
    else
        WriteText(result, std::cout);
    if (!std::cout.flush())
    {
        std::cerr << "validate: can't write the output\n";
        return kFound;
    }
    return result.Findings.empty() ? 0 : kFound;
}

} // namespace

int main(int argc, char** argv)
{
    const ZLMIM::Examples::Arguments arguments(argc, argv);
    ZLMIM::Examples::SetUpOutput();
    Request request;
    bool isJson = false;
    CLI::App app(
        "Judges assets (config.txt), meshes (.im) and animations (.kin) of the ZLM railway simulator: one "
        "line for each finding.");
    app.add_option("PATH", request.Paths, "A file, or a folder with a config.txt")->required();
    app.add_flag("-r,--recursive", request.IsRecursive,
                 "Walk whole folders, for each config.txt, .im and .kin in them");
    app.add_flag("--json", isJson, "Print the findings as JSON");
    app.footer(Footer());
    try
    {
        app.parse(arguments.Count(), arguments.Pointers());
        return Run(request, isJson);
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : kWrongCommandLine;
    }
    catch (const std::exception& error)
    {
        std::cerr << "validate: " << error.what() << '\n';
        return kFound;
    }
}
