#include "drawing.h"
#include "scene.h"
#include "sheet.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/output_names.h"
#include "tools/common/paths.h"
#include "tools/common/problems.h"
#include "tools/common/save_file.h"
#include "tools/common/text.h"
#include "tools/verbs.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <new>
#include <set>
#include <system_error>
#include <variant>

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

/// Draws the pictures that the command line requests.
class Job
{
public:
    explicit Job(const CommandLine& line)
        : mLine(line), mTurn(TurnOf(line.From)), mZoom(line.Zoom.value_or(1))
    {
        CheckOutput(line.Output);
        if (mZoom <= 0 || !std::isfinite(mZoom))
            throw UsageError("--zoom must be a finite number above 0, such as 2");
        if (line.Paths.size() > 1 && !line.Output.empty() && !line.IsSheet)
            throw UsageError(
                "-o names one picture, but there are several PATHs; leave it out, or use --sheet");
        if (line.IsAnimated && (line.Frame || line.Time || line.IsSheet))
            throw UsageError("--animate goes with none of --frame, --time and --sheet");
        if (line.Frame && line.Time)
            throw UsageError("--frame and --time exclude each other");
        if (line.Frame && (*line.Frame < 0 || *line.Frame > kMostFrame))
            throw UsageError("--frame must be from 0 to " + Number(kMostFrame));
        if (line.Time && (!(*line.Time >= 0) || !std::isfinite(*line.Time)))
            throw UsageError("--time must be a finite number from 0");
        mRequest.Only = LowerNames(line.Only);
        mRequest.Without = LowerNames(line.Without);
        mRequest.Poses = line.Poses == "mesh" ? PoseBase::Mesh : PoseBase::Parent;
        mRequest.HasTextures = !line.IsPlain;
        mSize = SizeOf(line.Size, line.IsSheet ? std::array{320, 240} : std::array{1200, 800});
    }

    int DrawAll()
    {
        if (mLine.IsSheet)
            return DrawSheet();
        for (const std::string& path : mLine.Paths)
        {
            const auto images = ImagesOf(path);
            if (images.empty())
                continue;
            Save(mLine.Output.empty() ? mOutputs.Add(StemOf(path)) : FromUtf8Path(mLine.Output),
                 mLine.IsAnimated ? ToAnimatedPng(images, mFramesPerSecond) : ToPng(images.front()));
        }
        return mStatus;
    }

private:
    int DrawSheet()
    {
        std::vector<std::string> paths;
        for (const std::string& path : mLine.Paths)
        {
            const auto found = AssetsBelow(FileName(path));
            paths.insert(paths.end(), found.begin(), found.end());
            if (found.empty())
                paths.push_back(path);
        }
        Sheet sheet(mSize[0], mSize[1]);
        for (const std::string& path : paths)
        {
            const auto images = ImagesOf(path);
            if (!images.empty())
                sheet.Add(images.front(), ShownFile(Folder(mInput)));
        }
        if (sheet.IsEmpty())
            return std::max(mStatus, kBadInput);
        const std::string output = mLine.Output.empty() ? "sheet.png" : mLine.Output;
        for (std::size_t number = 1; const Image& page : sheet.Pages())
        {
            std::string name = output;
            if (number > 1)
                name.insert(name.rfind('.'), "-" + std::to_string(number));
            Save(FromUtf8Path(name), ToPng(page));
            ++number;
        }
        return mStatus;
    }

    static void Save(const std::filesystem::path& path, const std::string& png)
    {
        SaveFile(path, png);
        std::cout << ToUtf8Path(path) << '\n';
    }

    static std::u16string Folder(const Input& input)
    {
        return input.Kind == Kind::Model ? FolderOf(input.Name) : input.Name;
    }

    void Complain(const std::string& what)
    {
        std::cout.flush();
        std::cerr << "zlmim picture: " << what << '\n';
        mStatus = kBadInput;
    }

    void Complain(const std::string& path, const std::string& what)
    {
        Complain((path.empty() ? "''" : path) + ": " + what);
    }

    /// The pictures of a path; empty if there are none.
    std::vector<Image> ImagesOf(const std::string& path)
    {
        std::optional<Asset> asset;
        try
        {
            asset = Load(path);
            return asset ? Images(path, *asset) : std::vector<Image>();
        }
        catch (const std::bad_alloc&)
        {
            const std::uint64_t size = asset ? MeshSizeOf(*asset) : 0;
            Complain(path, "there is no memory to draw it" +
                               (size > 0 ? " with its meshes of " + Bytes(size) : std::string()));
            return {};
        }
    }

    /// Of the files of its meshes.
    static std::uint64_t MeshSizeOf(const Asset& asset)
    {
        if (const auto* const mesh = std::get_if<std::shared_ptr<Mesh>>(&asset.Object))
            return static_cast<std::uint64_t>(std::max((*mesh)->FileSize, 0));
        std::uint64_t size = 0;
        if (const auto table = std::get<std::shared_ptr<ZLMModel>>(asset.Object)->MeshTable())
            for (const auto& entry : *table)
                size += static_cast<std::uint64_t>(std::max(entry->Mesh->FileSize, 0));
        return size;
    }

    std::optional<Asset> Load(const std::string& path)
    {
        mNames = std::make_shared<PathResolver>();
        const auto input = FindInput(FileName(path), *mNames);
        if (const auto* const why = std::get_if<std::string>(&input))
        {
            Complain(path, *why);
            return std::nullopt;
        }
        mInput = std::get<Input>(input);
        if (mInput.Kind == Kind::Anim)
        {
            Complain(path, "an animation by itself can't be drawn; give the asset's config.txt");
            return std::nullopt;
        }
        Asset asset = LoadAsset(mInput, mNames);
        const bool isWhole = mRequest.Only.empty();
        for (const Problem& problem :
             FindProblems(asset, mInput, mNames, isWhole ? References::Follow : References::Skip))
        {
            const auto* const model = std::get_if<std::shared_ptr<ZLMModel>>(&asset.Object);
            const bool isOwn = model && problem.Model == model->get() && problem.Entry;
            if (!isOwn || mRequest.Shows(problem.Entry->Name))
                Complain(Text(problem));
        }
        return asset;
    }

    Scene SceneOf(const Asset& asset, const SceneRequest& request)
    {
        SceneMaker maker(request, *mNames, mTextures);
        if (const auto* mesh = std::get_if<std::shared_ptr<Mesh>>(&asset.Object))
            return maker.Make(**mesh);
        return maker.Make(*std::get<std::shared_ptr<ZLMModel>>(asset.Object));
    }

    /// Names of entries that the asset doesn't have.
    bool HasEntries(const std::string& path, const Asset& asset)
    {
        std::set<std::u16string> wanted = mRequest.Only;
        wanted.insert(mRequest.Without.begin(), mRequest.Without.end());
        if (wanted.empty())
            return true;
        std::string known;
        if (const auto* model = std::get_if<std::shared_ptr<ZLMModel>>(&asset.Object))
            for (const auto& entry : *(*model)->MeshTable())
            {
                wanted.erase(entry->Name);
                known += (known.empty() ? "" : ", ") + Printable(entry->Name);
            }
        for (const std::u16string& name : wanted)
            Complain(path, "there is no entry \"" + Printable(name) + "\"" +
                               (known.empty() ? std::string() : "; there are: " + known));
        return wanted.empty();
    }

    /// The picture, or all pictures of an animation; empty if there is nothing to draw.
    std::vector<Image> Images(const std::string& path, const Asset& asset)
    {
        mTextures.clear();
        if (!HasEntries(path, asset))
            return {};
        SceneRequest request = mRequest;
        Scene scene = SceneOf(asset, request);
        std::vector<Scene> scenes;
        const bool isPosed = mLine.Frame || mLine.Time || mLine.IsAnimated;
        if (isPosed && !scene.AnimationRun)
        {
            Complain(path, "no mesh of it has an animation, so it is drawn as stored");
        }
        else if (isPosed)
        {
            const auto [first, last] = *scene.AnimationRun;
            mFramesPerSecond = scene.FramesPerSecond;
            std::vector<double> slots;
            if (mLine.IsAnimated)
                for (std::int32_t slot = first; slot <= std::min(last, first + kMaxFrames - 1); ++slot)
                    slots.push_back(slot);
            else
                slots.push_back(Slot(path, first, last));
            for (const double slot : slots)
            {
                request.Slot = slot;
                scenes.push_back(SceneOf(asset, request));
            }
            if (last - first >= kMaxFrames)
                Complain(path, "only the first " + Number(kMaxFrames) + " frames are drawn");
        }
        if (scenes.empty())
            scenes.push_back(std::move(scene));
        return DrawScenes(path, scenes);
    }

    double Slot(const std::string& path, std::int32_t first, std::int32_t last)
    {
        const int perSecond = std::max(mFramesPerSecond, 0);
        const double slot = mLine.Frame ? static_cast<double>(*mLine.Frame) : first + *mLine.Time * perSecond;
        if ((slot < first || slot > last) && mLine.Frame)
            Complain(path,
                     "the animation has the frames " + std::to_string(first) + " to " + std::to_string(last));
        else if (slot > last)
            Complain(path, "the animation ends after " +
                               Decimal(static_cast<float>(last - first) / static_cast<float>(perSecond)) +
                               " seconds");
        else if (!mLine.Frame && perSecond == 0)
            Complain(path, "the animation has no number of frames per second, so its first frame is drawn");
        return std::clamp<double>(slot, first, last);
    }

    std::vector<Image> DrawScenes(const std::string& path, std::vector<Scene>& scenes)
    {
        Frame frame(mTurn);
        for (const Scene& scene : scenes)
            frame.Include(scene);
        std::vector<Image> images;
        for (Scene& scene : scenes)
        {
            Drawing drawing = Draw(scene, frame, mSize[0], mSize[1], mZoom);
            if (drawing.Skipped > 0)
                scene.Problems.push_back(
                    Counted(static_cast<std::int64_t>(drawing.Skipped), "triangle is", "triangles are") +
                    " skipped, since drawing would take too long");
            images.push_back(std::move(drawing.Image));
        }
        const Scene& scene = scenes.front();
        for (const std::string& problem : scene.Problems)
            Complain(path, problem);
        for (const std::string& note : scene.Notes)
            std::cerr << "zlmim picture: " << path << ": " << note << '\n';
        if (scene.Triangles.empty() && scene.Lines.empty())
        {
            Complain(path, "there is nothing to draw");
            return {};
        }
        return images;
    }

    static constexpr std::int32_t kMaxFrames = 1'000;
    static constexpr std::int64_t kMostFrame = 1'000'000'000;

    const CommandLine& mLine;
    Turn mTurn;
    double mZoom;
    std::array<int, 2> mSize = {};
    SceneRequest mRequest;
    std::shared_ptr<PathResolver> mNames;
    TextureCache mTextures;
    Input mInput;
    int mFramesPerSecond = 0;
    OutputNames mOutputs = OutputNames(".png");
    int mStatus = kGood;
};

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
        [line] { return Job(*line).DrawAll(); }};
}

} // namespace ZLMIM::Tools
