#include "drawing.h"
#include "scene.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/verbs.h"

#include <array>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <variant>

namespace ZLMIM::Tools
{
namespace
{

using namespace ZLMIM::Picture;

const std::map<std::string, Side> kSides = {
    {"front", Side::Front}, {"back", Side::Back},     {"left", Side::Left},     {"right", Side::Right},
    {"top", Side::Top},     {"bottom", Side::Bottom}, {"corner", Side::Corner},
};

struct CommandLine
{
    std::string Path;
    std::string Output;
    std::string From = "corner";
};

Scene SceneOf(const Asset& asset)
{
    if (const auto* mesh = std::get_if<std::shared_ptr<Mesh>>(&asset.Object))
        return MakeScene(**mesh);
    if (const auto* model = std::get_if<std::shared_ptr<ZLMModel>>(&asset.Object))
        return MakeScene(**model);
    return {};
}

void Report(const Scene& scene)
{
    const char* before = "zlmim picture: left out: ";
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

int Run(const CommandLine& commandLine)
{
    const auto names = std::make_shared<FileNames>();
    const auto input = FindInput(FileName(commandLine.Path), *names);
    if (const auto* const why = std::get_if<std::string>(&input))
    {
        std::cerr << "zlmim picture: " << commandLine.Path << ": " << *why << '\n';
        return kBadInput;
    }
    const Asset asset = LoadAsset(std::get<Input>(input), names);
    Scene scene = SceneOf(asset);
    const Image image = Draw(scene.Triangles, kSides.at(commandLine.From), 1200, 800);
    if (image.LeftOut > 0)
        scene.LeftOut["triangles, for their size"] = image.LeftOut;
    Report(scene);
    if (scene.Triangles.empty())
    {
        std::cerr << "zlmim picture: " << commandLine.Path << ": nothing to draw\n";
        return kBadInput;
    }
    Write(commandLine.Output, ToPng(image));
    return asset.Outcome.IsLoaded ? kGood : kBadInput;
}

} // namespace

Verb PictureVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {"picture",
            "draw meshes and assets into PNG files",
            "Draws a mesh (.im) or an asset (config.txt) into a PNG file.",
            {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Path},
             {"-o,--output", "FILE", "the picture to write", &line->Output},
             {"--from",
              "SIDE",
              "front, back, left, right, top, bottom or corner (default)",
              &line->From,
              {"front", "back", "left", "right", "top", "bottom", "corner"}}},
            {{"Exit status",
              {"0\tthe picture was drawn", "1\tthe file wasn't read to its end",
               "2\tthe command line is wrong, or the picture can't be written"}}},
            [line] { return Run(*line); }};
}

} // namespace ZLMIM::Tools
