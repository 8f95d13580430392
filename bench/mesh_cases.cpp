#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_mesh.h"
#include "zlmim/mesh/mesh.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench
{
namespace
{

constexpr std::int32_t kFileSize = 64 * 1'048'576;

/// Equal mesh files that are loaded and kept.
class Meshes
{
public:
    /// Writes the files.
    Meshes(const TempFolder& folder, const std::string& subfolder, int count, const MadeMesh& made)
        : mRuns(made.runs)
    {
        for (int i = 0; i < count; ++i)
        {
            const std::string entry = subfolder + "/" + std::to_string(i) + ".im";
            folder.Write(entry, made.file);
            mPaths.push_back(folder.Path() / entry);
            mNames.push_back(
                folder.Name(ZLMIM::FromNativeName(subfolder + "\\" + std::to_string(i)) + u".im"));
        }
    }

    [[nodiscard]] Side Library() const { return LoadMeshes(mNames); }

    [[nodiscard]] Side Floor(Pages pages = Pages::Faulted) const
    {
        return [paths = mPaths, runs = mRuns, pages]
        {
            std::vector<Array> arrays;
            return Timed(
                [&]
                {
                    for (const auto& path : paths)
                        CopyRuns(ReadRawFile(path, pages), runs, arrays, pages);
                });
        };
    }

private:
    std::vector<FileRun> mRuns;
    std::vector<std::u16string> mNames;
    std::vector<std::string> mPaths;
};

/// As much in 100 meshes, in 10, and in one.
Growth MeshGrowth(const TempFolder& folder)
{
    constexpr std::int32_t kVertices = 130;
    constexpr std::int32_t kSmallest = 100;
    Growth growth = {"a mesh of 100, 1,000 and 10,000 chunks of 6.5 KiB", "chunk", {}};
    std::int32_t times = 1;
    for (Sized& sized : growth.sizes)
    {
        const std::int32_t chunks = kSmallest * times;
        const Meshes meshes(folder, "growth" + std::to_string(times), 100 / times,
                            MakeMesh({.chunks = chunks, .vertices = kVertices}));
        sized = {100.0 * kSmallest, meshes.Library(), meshes.Floor()};
        times *= 10;
    }
    return growth;
}

} // namespace

Side LoadMeshes(const std::vector<std::u16string>& names)
{
    return [names]
    {
        std::vector<std::unique_ptr<ZLMIM::Mesh>> meshes;
        return Timed(
            [&]
            {
                for (const auto& name : names)
                {
                    if (!meshes.emplace_back(std::make_unique<ZLMIM::Mesh>())->Load(name))
                        throw std::runtime_error("a made-up mesh doesn't load");
                }
            });
    };
}

Measures LargeMesh(const TempFolder& folder)
{
    constexpr std::int32_t kChunks = 48;
    const Meshes mesh(folder, "large", 1,
                      MakeMesh({.chunks = kChunks, .vertices = kFileSize / kChunks / kBytesPerVertex}));
    return {{{"a mesh of 64 MiB in 48 chunks", mesh.Library(), mesh.Floor(), 0.75},
             {"the same, beside a floor that prefaults", mesh.Library(), mesh.Floor(Pages::Prefaulted)}},
            {MeshGrowth(folder)}};
}

Measures SmallMeshes(const TempFolder& folder)
{
    const Meshes meshes(folder, "small", 5'000, MakeMesh({.chunks = 3, .vertices = 20, .textures = 2}));
    return {{{"5,000 meshes of 4 KiB, all kept", meshes.Library(), meshes.Floor(), 1.25}}};
}

} // namespace Bench
