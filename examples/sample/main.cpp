#include "examples/command_line.h"
#include "examples/sample/sample_assets.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    const ZLMIM::Examples::Arguments arguments(argc, argv);
    CLI::App app("Writes a small set of sample assets into a folder.");
    std::string folder;
    app.add_option("FOLDER", folder, "Where to write; made if it doesn't exist")->required();
    try
    {
        app.parse(arguments.Count(), arguments.Pointers());
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : 2;
    }
    try
    {
        Sample::WriteSampleAssets(std::u8string(folder.begin(), folder.end()));
    }
    catch (const std::exception& error)
    {
        std::cerr << "sample: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
