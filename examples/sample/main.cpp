#include "examples/sample/sample_assets.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    CLI::App app("Writes a small set of sample assets into a folder.");
    std::string folder;
    app.add_option("FOLDER", folder, "Where to write; made if it doesn't exist")->required();
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : 2;
    }
    try
    {
        Sample::WriteSampleAssets(folder);
    }
    catch (const std::exception& error)
    {
        std::cerr << "sample: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
