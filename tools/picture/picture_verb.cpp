#include "picture_job.h"

#include "tools/common/text.h"
#include "tools/verbs.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace ZLMIM::Tools
{
namespace
{

using namespace ZLMIM::Picture;

struct CommandLine
{
    std::vector<std::string> Paths;
    std::string Output;
    std::string From = "corner";
    std::string Size;
    std::optional<double> Zoom;
    std::optional<std::int64_t> Frame;
    std::optional<double> Time;
    std::string Poses = "parent";
    std::vector<std::string> Only;
    std::vector<std::string> Without;
    bool IsAnimated = false;
    bool IsSheet = false;
    bool IsPlain = false;
};

template <class Number>
bool Parse(std::string_view text, Number& number)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

Turn TurnOf(const std::string& from)
{
    if (from == "top")
        return TurnFromTop();
    if (from == "bottom")
        return TurnFromBottom();
    if (from == "corner")
        return TurnFromCorner();
    constexpr std::array<std::string_view, 4> kSides = {"front", "right", "back", "left"};
    if (const auto side = std::find(kSides.begin(), kSides.end(), from); side != kSides.end())
        return TurnFrom(90.0 * static_cast<double>(side - kSides.begin()), 0);
    const std::size_t comma = std::min(from.find(','), from.size());
    double azimuth = 0;
    double elevation = 0;
    if (comma == from.size() || !Parse(std::string_view(from).substr(0, comma), azimuth) ||
        !Parse(std::string_view(from).substr(comma + 1), elevation) || !(std::abs(azimuth) <= 360) ||
        !(std::abs(elevation) <= 90)) // nor NaN
        throw UsageError(
            "--from: '" + from +
            "' is neither front, back, left, right, top, bottom or corner, nor two angles in degrees "
            "such as 30,15 (the second from -90 to 90)");
    return TurnFrom(azimuth, elevation);
}

std::array<int, 2> SizeOf(const std::string& size, std::array<int, 2> byDefault)
{
    if (size.empty())
        return byDefault;
    const std::size_t cross = std::min(size.find('x'), size.size());
    std::array<int, 2> pixels = {};
    const auto isSide = [](int side) { return side >= 16 && side <= 4096; };
    if (cross == size.size() || !Parse(std::string_view(size).substr(0, cross), pixels[0]) ||
        !Parse(std::string_view(size).substr(cross + 1), pixels[1]) || !isSide(pixels[0]) ||
        !isSide(pixels[1]))
        throw UsageError("--size: '" + size +
                         "' isn't WIDTHxHEIGHT, such as 1200x800, with 16 to 4096 pixels each");
    return pixels;
}

std::set<std::u16string> LowerNames(const std::vector<std::string>& names)
{
    std::set<std::u16string> lowerNames;
    for (const std::string& name : names)
        lowerNames.insert(LowerCase(FromUtf8(name).value_or(FromWindows1252(name))));
    return lowerNames;
}

void CheckOutput(const std::string& output)
{
    const std::string ending = output.substr(std::min(output.rfind('.'), output.size()));
    std::string lowerEnding = ending;
    std::transform(ending.begin(), ending.end(), lowerEnding.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (!output.empty() && lowerEnding != ".png" && lowerEnding != ".apng")
        throw UsageError("-o: '" + output + "' must end in .png: pictures are PNG files, also animated ones");
}

/// @throws UsageError if the options contradict each other, or a value isn't allowed.
PictureOptions OptionsOf(const CommandLine& line)
{
    constexpr std::int64_t kMostFrame = 1'000'000'000;
    PictureOptions options = {.Paths = line.Paths,
                              .Output = line.Output,
                              .From = TurnOf(line.From),
                              .Zoom = line.Zoom.value_or(1),
                              .Frame = line.Frame,
                              .Time = line.Time,
                              .IsAnimated = line.IsAnimated,
                              .IsSheet = line.IsSheet};
    CheckOutput(line.Output);
    if (options.Zoom <= 0 || !std::isfinite(options.Zoom))
        throw UsageError("--zoom must be a finite number above 0, such as 2");
    if (line.Paths.size() > 1 && !line.Output.empty() && !line.IsSheet)
        throw UsageError("-o names one picture, but there are several PATHs; leave it out, or use --sheet");
    if (line.IsAnimated && (line.Frame || line.Time || line.IsSheet))
        throw UsageError("--animate goes with none of --frame, --time and --sheet");
    if (line.Frame && line.Time)
        throw UsageError("--frame and --time exclude each other");
    if (line.Frame && (*line.Frame < 0 || *line.Frame > kMostFrame))
        throw UsageError("--frame must be from 0 to " + Number(kMostFrame));
    if (line.Time && (!(*line.Time >= 0) || !std::isfinite(*line.Time)))
        throw UsageError("--time must be a finite number from 0");
    options.Request.Only = LowerNames(line.Only);
    options.Request.Without = LowerNames(line.Without);
    options.Request.Poses = line.Poses == "mesh" ? PoseBase::Mesh : PoseBase::Parent;
    options.Request.HasTextures = !line.IsPlain;
    options.Size = SizeOf(line.Size, line.IsSheet ? std::array{320, 240} : std::array{1200, 800});
    return options;
}

} // namespace

Verb PictureVerb()
{
    const auto line = std::make_shared<CommandLine>();
    return {
        "picture",
        "draw meshes and assets into PNG files",
        "Draws each mesh (.im) and asset (config.txt) into a PNG file, and prints the file's name. An asset "
        "is drawn with its textures, with what hangs on its attachment points, and with its bogeys and "
        "pantograph.",
        {{"PATH", "", "a file, or a folder with a config.txt; with / or \\", &line->Paths},
         {"-o,--output", "FILE",
          "the picture to write; by default named after the asset's folder or the mesh, in the working "
          "folder",
          &line->Output},
         {"--size", "WIDTHxHEIGHT", "in pixels, 16 to 4096 each (default: 1200x800)", &line->Size},
         {"--from", "SIDE",
          "front, back, left, right, top, bottom or corner (the default); or two angles in degrees, "
          "AZIMUTH,ELEVATION: 0,0 is the front, 90,0 the right side, 0,90 the top",
          &line->From},
         {"--zoom", "FACTOR", "enlarge the middle of the picture (default: 1)", &line->Zoom},
         {"--only", "ENTRY", "draw only this entry of the mesh table; may be repeated", &line->Only},
         {"--without", "ENTRY", "leave out this entry of the mesh table; may be repeated", &line->Without},
         {"--frame", "N", "pose the meshes as in slot N of their animations", &line->Frame},
         {"--time", "SECONDS", "pose the meshes as after so many seconds", &line->Time},
         {"--animate", "", "draw the whole run of the animations, as an animated PNG", &line->IsAnimated},
         {"--poses",
          "BASE",
          "what an animation's poses are relative to: parent (the parent bone, the default) or mesh",
          &line->Poses,
          {"parent", "mesh"}},
         {"--plain", "", "draw in the materials' colours, without textures", &line->IsPlain},
         {"--sheet", "",
          "draw all assets in folders and below into one contact sheet, sheet.png by default; --size is that "
          "of each picture (default: 320x240)",
          &line->IsSheet}},
        {{"Examples",
          {"zlmim picture wagon\tdraw the asset in the folder wagon into wagon.png",
           "zlmim picture wagon --from=right --without=load -o side.png\tits right side, without the load",
           "zlmim picture wagon --animate\tall frames of its animations",
           "zlmim picture --sheet .\tall assets below the working folder in sheet.png"}},
         {"Exit status",
          {"0\tevery picture was drawn",
           "1\tsomething is missing or broken, or there is nothing to draw; the rest was drawn",
           "2\tthe command line is wrong, or a picture can't be written"}}},
        [line] { return DrawPictures(OptionsOf(*line)); }};
}

} // namespace ZLMIM::Tools
