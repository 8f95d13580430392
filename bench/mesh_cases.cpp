#include "bench/cases.h"
#include "bench/floor.h"
#include "bench/made_mesh.h"
#include "zlmim/mesh/mesh.h"

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace Bench
{
namespace
{

void LoadOrThrow(ZLMIM::Mesh& mesh, const std::u16string& name)
{
    if (!mesh.Load(name))
        throw std::runtime_error("a made-up mesh doesn't load");
}

} // namespace

Case LargeMesh(const TempFolder& folder)
{
    constexpr std::int32_t kChunks = 48;
    constexpr std::int32_t kFileSize = 64 * 1'048'576;
    MadeMesh made = MakeMesh({.chunks = kChunks, .vertices = kFileSize / kChunks / kBytesPerVertex});
    folder.Write("large.im", made.file);

    const auto library = [name = folder.Name(u"large.im")]
    {
        ZLMIM::Mesh mesh;
        return Timed([&] { LoadOrThrow(mesh, name); });
    };
    const auto floor = [path = folder.Path() / "large.im", runs = std::move(made.runs)]
    {
        std::vector<void*> arrays;
        const double seconds = Timed(
            [&]
            {
                const RawFile file = ReadRawFile(path);
                CopyRuns(file, runs, arrays);
                std::free(file.bytes);
            });
        FreeAll(arrays);
        return seconds;
    };
    return {"a mesh of 64 MiB in 48 chunks", library, floor, 0.9};
}

Case SmallMeshes(const TempFolder& folder)
{
    constexpr int kMeshes = 5'000;
    const MadeMesh made = MakeMesh({.chunks = 3, .vertices = 20, .textures = 2});
    std::vector<std::u16string> names;
    std::vector<std::string> paths;
    for (int i = 0; i < kMeshes; ++i)
    {
        const std::string entry = "small/" + std::to_string(i) + ".im";
        folder.Write(entry, made.file);
        paths.push_back(folder.Path() / entry);
        names.push_back(folder.Name(u"small\\" + ZLMIM::FromNativeName(std::to_string(i)) + u".im"));
    }

    const auto library = [names]
    {
        std::vector<std::unique_ptr<ZLMIM::Mesh>> meshes;
        return Timed(
            [&]
            {
                for (const auto& name : names)
                    LoadOrThrow(*meshes.emplace_back(std::make_unique<ZLMIM::Mesh>()), name);
            });
    };
    const auto floor = [paths, runs = made.runs]
    {
        std::vector<void*> arrays;
        const double seconds = Timed(
            [&]
            {
                for (const auto& path : paths)
                {
                    const RawFile file = ReadRawFile(path);
                    CopyRuns(file, runs, arrays);
                    std::free(file.bytes);
                }
            });
        FreeAll(arrays);
        return seconds;
    };
    return {"5,000 meshes of 4 KiB, all kept", library, floor, 1.5};
}

} // namespace Bench
