#include "picture_job.h"

#include "drawing.h"
#include "sheet.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/output_names.h"
#include "tools/common/paths.h"
#include "tools/common/problems.h"
#include "tools/common/save_file.h"
#include "tools/common/text.h"
#include "tools/common/verb.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <set>
#include <variant>

namespace ZLMIM::Tools
{
namespace
{

using namespace ZLMIM::Picture;

class Job
{
public:
    explicit Job(const PictureOptions& options) : mOptions(options) {}

    int DrawAll()
    {
        if (mOptions.IsSheet)
            return DrawSheet();
        for (const std::string& path : mOptions.Paths)
        {
            const auto images = ImagesOf(path);
            if (images.empty())
                continue;
            Save(mOptions.Output.empty() ? mOutputs.Add(StemOf(path)) : FromUtf8Path(mOptions.Output),
                 mOptions.IsAnimated ? ToAnimatedPng(images, mFramesPerSecond) : ToPng(images.front()));
        }
        return mStatus;
    }

private:
    int DrawSheet()
    {
        std::vector<std::string> paths;
        for (const std::string& path : mOptions.Paths)
        {
            const auto found = AssetsBelow(FileName(path));
            paths.insert(paths.end(), found.begin(), found.end());
            if (found.empty())
                paths.push_back(path);
        }
        Sheet sheet(mOptions.Size[0], mOptions.Size[1]);
        for (const std::string& path : paths)
        {
            const auto images = ImagesOf(path);
            if (!images.empty())
                sheet.Add(images.front(), ShownFile(Folder(mInput)));
        }
        if (sheet.IsEmpty())
            return std::max(mStatus, kBadInput);
        const std::string output = mOptions.Output.empty() ? "sheet.png" : mOptions.Output;
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
        const bool isWhole = mOptions.Request.Only.empty();
        for (const Problem& problem :
             FindProblems(asset, mInput, mNames, isWhole ? References::Follow : References::Skip))
        {
            const auto* const model = std::get_if<std::shared_ptr<ZLMModel>>(&asset.Object);
            const bool isOwn = model && problem.Model == model->get() && problem.Entry;
            if (!isOwn || mOptions.Request.Shows(problem.Entry->Name))
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
        std::set<std::u16string> wanted = mOptions.Request.Only;
        wanted.insert(mOptions.Request.Without.begin(), mOptions.Request.Without.end());
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
        SceneRequest request = mOptions.Request;
        Scene scene = SceneOf(asset, request);
        std::vector<Scene> scenes;
        const bool isPosed = mOptions.Frame || mOptions.Time || mOptions.IsAnimated;
        if (isPosed && !scene.AnimationRun)
        {
            Complain(path, "no mesh of it has an animation, so it is drawn as stored");
        }
        else if (isPosed)
        {
            const auto [first, last] = *scene.AnimationRun;
            mFramesPerSecond = scene.FramesPerSecond;
            std::vector<double> slots;
            if (mOptions.IsAnimated)
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
        const double slot =
            mOptions.Frame ? static_cast<double>(*mOptions.Frame) : first + *mOptions.Time * perSecond;
        if ((slot < first || slot > last) && mOptions.Frame)
            Complain(path,
                     "the animation has the frames " + std::to_string(first) + " to " + std::to_string(last));
        else if (slot > last)
            Complain(path, "the animation ends after " +
                               Decimal(static_cast<float>(last - first) / static_cast<float>(perSecond)) +
                               " seconds");
        else if (!mOptions.Frame && perSecond == 0)
            Complain(path, "the animation has no number of frames per second, so its first frame is drawn");
        return std::clamp<double>(slot, first, last);
    }

    std::vector<Image> DrawScenes(const std::string& path, std::vector<Scene>& scenes)
    {
        Frame frame(mOptions.From);
        for (const Scene& scene : scenes)
            frame.Include(scene);
        std::vector<Image> images;
        for (Scene& scene : scenes)
        {
            Drawing drawing = Draw(scene, frame, mOptions.Size[0], mOptions.Size[1], mOptions.Zoom);
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

    const PictureOptions& mOptions;
    std::shared_ptr<PathResolver> mNames;
    TextureCache mTextures;
    Input mInput;
    int mFramesPerSecond = 0;
    OutputNames mOutputs = OutputNames(".png");
    int mStatus = kGood;
};

} // namespace

int DrawPictures(const PictureOptions& options) { return Job(options).DrawAll(); }

} // namespace ZLMIM::Tools
