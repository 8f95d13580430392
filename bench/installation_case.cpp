#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_anim.h"
#include "bench/made_mesh.h"
#include "zlmim/config/zlm_model.h"

#include <atomic>
#include <functional>
#include <future>
#include <iomanip>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Bench
{
namespace
{

constexpr std::size_t kAssets = 20'000;
constexpr std::size_t kAnimated = 5; // one asset of so many
constexpr double kWantedSpeedUp = 1.7;

/// Calls `work` for each number below `count`, on several threads that take the next number in turn.
void ForEach(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work)
{
    std::atomic<std::size_t> next = 0;
    const auto run = [&]
    {
        for (std::size_t i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::future<void>> others;
    for (unsigned i = 1; i < threads; ++i)
        others.push_back(std::async(std::launch::async, run));
    run();
    for (auto& other : others)
        other.get();
}

/// A library folder of assets: a config of 1 KiB and a mesh of 20 KiB each, and an animation next to some.
/// Both sides keep what they load.
class Library
{
public:
    /// Writes the files.
    explicit Library(const TempFolder& folder)
        : mMesh(MakeMesh({.chunks = 4, .vertices = 100, .textures = 2})), mAnim(MakeAnim(10, 60)),
          mTop(folder.Path() / "library"), mName(folder.Name(u"library"))
    {
        for (std::size_t i = 0; i < kAssets; ++i)
        {
            const std::string asset = "library/" + Asset(i);
            folder.Write(asset + "/config.txt",
                         "kuid <kuid:7:" + std::to_string(i) +
                             ">\r\nkind \"scenery\"\r\nusername \"A made-up house\"\r\nmesh-table\r\n{\r\n"
                             "  default\r\n  {\r\n    mesh body.im\r\n    auto-create 1\r\n  }\r\n}\r\n"
                             "description \"" +
                             std::string(800, 'x') + "\"\r\n");
            folder.Write(asset + "/body.im", mMesh.file);
            if (i % kAnimated == 0)
                folder.Write(asset + "/anim.kin", mAnim.file);
        }
    }

    /// Loads the first `count` assets.
    [[nodiscard]] double Load(std::size_t count, unsigned threads) const
    {
        std::vector<std::shared_ptr<ZLMIM::ZLMModel>> models(count);
        const double seconds = Timed(
            [&]
            {
                ForEach(count, threads,
                        [&](std::size_t i)
                        {
                            models[i] = std::make_shared<ZLMIM::ZLMModel>();
                            models[i]->Load(mName + u"\\" + ZLMIM::FromNativeName(Asset(i)) +
                                            u"\\config.txt");
                        });
            });
        for (std::size_t i = 0; i < count; ++i)
        {
            const auto entry = models[i]->MeshTable()->Item(1);
            if (entry->Mesh->Chunks->Count() != 4 ||
                (entry->anim->RootBone != nullptr) != (i % kAnimated == 0))
                throw std::runtime_error("an asset wasn't loaded");
        }
        return seconds;
    }

    /// Opens the same files, and keeps the config's text and the same arrays.
    [[nodiscard]] double Copy(std::size_t count, unsigned threads) const
    {
        std::vector<std::vector<Array>> assets(count);
        return Timed(
            [&]
            {
                ForEach(count, threads,
                        [&](std::size_t i)
                        {
                            const std::string asset = mTop + "/" + Asset(i);
                            assets[i].push_back(ReadRawFile(asset + "/config.txt").bytes);
                            CopyRuns(ReadRawFile(asset + "/body.im"), mMesh.runs, assets[i]);
                            if (const RawFile anim = ReadRawFileIfThere(asset + "/anim.kin"); anim.bytes)
                                CopyFrames(anim, mAnim, assets[i]);
                        });
            });
    }

private:
    static std::string Asset(std::size_t i) { return "asset" + std::to_string(100'000 + i); }

    MadeMesh mMesh;
    MadeAnim mAnim;
    std::string mTop;
    std::u16string mName;
};

} // namespace

Measures Installation(const TempFolder& folder)
{
    const auto library = std::make_shared<const Library>(folder);
    const auto load = [library](std::size_t count, unsigned threads) -> Side
    { return [=] { return library->Load(count, threads); }; };
    const auto copy = [library](std::size_t count, unsigned threads) -> Side
    { return [=] { return library->Copy(count, threads); }; };

    Measures measures;
    measures.cases.push_back({"an installation of 20,000 assets", load(kAssets, 1), copy(kAssets, 1), 1.3});
    if (const unsigned cores = std::thread::hardware_concurrency(); cores > 1)
    {
        measures.cases.push_back({"the same on all cores", load(kAssets, cores), copy(kAssets, cores)});
        // The library's speed-up is only judged where the floor reaches the wanted one.
        const double floor = RunPairs(copy(kAssets, 2), copy(kAssets, 1), 3).ratio;
        std::ostringstream name;
        name << std::fixed << std::setprecision(2) << "on 2 cores beside one; the floor reaches " << floor;
        const auto wanted = floor <= 1 / kWantedSpeedUp ? std::optional(1 / kWantedSpeedUp) : std::nullopt;
        measures.cases.push_back({name.str(), load(kAssets, 2), load(kAssets, 1), wanted});
    }
    Growth growth = {"an installation of 200, 2,000 and 20,000 assets", "asset", {}};
    std::size_t count = kAssets / 100;
    for (Sized& sized : growth.sizes)
    {
        sized = {static_cast<double>(count), load(count, 1), copy(count, 1)};
        count *= 10;
    }
    measures.growths.push_back(growth);
    return measures;
}

} // namespace Bench
