#include "json.h"
#include "tree.h"

#include "examples/asset.h"
#include "examples/command_line.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace
{

using namespace ZLMIM::Examples;
using namespace ZLMIM::Inspect;

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

struct CommandLine
{
    std::string Path;
    bool IsJson = false;
};

int Run(const CommandLine& commandLine)
{
    const Asset asset = LoadAsset(FileName(commandLine.Path));
    if (commandLine.IsJson)
    {
        WriteJson(asset, std::cout);
        std::cout << '\n';
    }
    else
    {
        std::cout << TreeText(asset);
    }
    if (!std::cout.flush())
    {
        std::cerr << "inspect: can't write the output\n";
        return kFailed;
    }
    return ExitStatus(asset.Outcome);
}

} // namespace

int main(int argc, char** argv)
{
    const Arguments arguments(argc, argv);
    SetUpOutput();
    CommandLine commandLine;
    CLI::App app("Shows what a mesh (.im), an animation (.kin) or an asset (config.txt) of the ZLM railway "
                 "simulator holds.");
    app.add_option("PATH", commandLine.Path, "The file, with / or \\ between its folders")->required();
    app.add_flag("--json", commandLine.IsJson, "Print every property, as one JSON object");
    app.footer("Exit status: 0 if the file was read, 1 if not, 2 for a wrong command line.");
    try
    {
        app.parse(arguments.Count(), arguments.Pointers());
        return Run(commandLine);
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : kWrongCommandLine;
    }
    catch (const std::exception& error)
    {
        std::cerr << "inspect: " << error.what() << '\n';
        return kFailed;
    }
}
