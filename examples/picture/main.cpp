#include "drawing.h"
#include "scene.h"

#include "examples/asset.h"
#include "examples/command_line.h"
#include "zlmim/model/text.h"

#include <CLI/CLI.hpp>

#include <array>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <variant>

namespace
{

using namespace ZLMIM::Examples;
using namespace ZLMIM::Picture;

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

const std::map<std::string, Side>& Sides()
{
    static const std::map<std::string, Side> sides = {
        {"front", Side::Front}, {"back", Side::Back},     {"left", Side::Left},     {"right", Side::Right},
        {"top", Side::Top},     {"bottom", Side::Bottom}, {"corner", Side::Corner},
    };
    return sides;
}

struct CommandLine
{
    std::string Path;
    std::string Output;
    std::string From = "corner";
    std::array<int, 2> Size = {1200, 800};
};

/// What `LoadAsset` tells of a failure.
std::string WhyNotLoaded(const Asset& asset)
{
    if (!asset.Outcome.Raised.empty())
        return asset.Outcome.What;
    if (const auto* mesh = std::get_if<std::shared_ptr<ZLMIM::Mesh>>(&asset.Object))
        if (!(*mesh)->ErrorMessage.empty())
            return ZLMIM::ToUtf8((*mesh)->ErrorMessage);
    return "can't be read";
}

Scene SceneOf(const Asset& asset)
{
    if (const auto* mesh = std::get_if<std::shared_ptr<ZLMIM::Mesh>>(&asset.Object))
        return MakeScene(**mesh);
    if (const auto* model = std::get_if<std::shared_ptr<ZLMIM::ZLMModel>>(&asset.Object))
        return MakeScene(**model);
    return {};
}

void Report(const Scene& scene)
{
    const char* before = "picture: left out: ";
    for (const auto& [what, count] : scene.LeftOut)
    {
        std::cerr << before << what << " (" << count << ')';
        before = "; ";
    }
    if (!scene.LeftOut.empty())
        std::cerr << '\n';
}

void Write(const std::string& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error(path + ": can't be written");
}

void Run(const CommandLine& commandLine)
{
    const Asset asset = LoadAsset(FileName(commandLine.Path));
    if (!asset.Outcome.IsLoaded)
        throw std::runtime_error(commandLine.Path + ": " + WhyNotLoaded(asset));
    Scene scene = SceneOf(asset);
    const Image image =
        Draw(scene.Triangles, Sides().at(commandLine.From), commandLine.Size[0], commandLine.Size[1]);
    if (image.LeftOut > 0)
        scene.LeftOut["triangles, for their size"] = image.LeftOut;
    Report(scene);
    if (scene.Triangles.empty())
        throw std::runtime_error(commandLine.Path + ": nothing to draw");
    Write(commandLine.Output, ToPng(image));
}

} // namespace

int main(int argc, char** argv)
{
    const Arguments arguments(argc, argv);
    CommandLine commandLine;
    CLI::App app("Draws a mesh (.im) or an asset (config.txt) of the ZLM railway simulator into a PNG file.");
    app.add_option("PATH", commandLine.Path, "The file, with / or \\ between its folders")->required();
    app.add_option("-o,--output", commandLine.Output, "The picture to write")->required();
    app.add_option("--from", commandLine.From,
                   "front, back, left, right, top, bottom or corner (default: corner)")
        ->option_text("SIDE")
        ->check(CLI::IsMember(Sides()));
    app.add_option("--size", commandLine.Size, "Pixels, 16 to 4096 each way (default: 1200x800)")
        ->option_text("WIDTHxHEIGHT")
        ->delimiter('x')
        ->check(CLI::Range(16, 4096));
    app.footer(
        "Exit status: 0 if the picture was drawn, 1 if the asset wasn't read or the picture not written, "
        "2 for a wrong command line.");
    try
    {
        app.parse(arguments.Count(), arguments.Pointers());
        Run(commandLine);
        return 0;
    }
    catch (const CLI::ParseError& error)
    {
        return app.exit(error) == 0 ? 0 : kWrongCommandLine;
    }
    catch (const std::exception& error)
    {
        std::cerr << "picture: " << error.what() << '\n';
        return kFailed;
    }
}
