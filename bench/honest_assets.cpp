#include "bench/hostile.h"
#include "fuzz/memory_file_system.h"
#include "tests/asset_folder.h"
#include "tests/good_files.h"
#include "zlmim/config/disk_file_system.h"

#include <array>
#include <fstream>

namespace Bench
{

using namespace ZLMIM::Testing;
using std::filesystem::path;

namespace
{

/// A mesh of `size` bytes, nearly all of it vertices.
std::string MeshOf(std::int32_t size)
{
    const std::int32_t vertices = size / 32;
    const std::array<std::int32_t, 5> counts = {vertices, 0, 0, 0, 0};
    const auto geometry =
        Bytes().Long(200).Zeros(8).Record(counts).Long(0).Zeros(static_cast<std::size_t>(vertices) * 32);
    return MeshHeader(1).Block("CHNK", Bytes().Long(1).Long(1).Block("GEOM", geometry)).Str();
}

/// An animation of `size` bytes: ten bones, and as many frames as fit.
std::string AnimOf(std::int32_t size)
{
    const auto frame = Frame(0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    const auto frames = size / static_cast<std::int32_t>(frame.Size());
    Bytes children;
    for (int i = 0; i < 9; ++i)
        children.Append(AnimBone("child"));
    auto anim = AnimWith(frames, AnimBone("root", 9, children));
    for (std::int32_t i = 0; i < frames; ++i)
        anim.Append(frame);
    return anim.Str();
}

std::string Config(const std::string& kuid, int entries, int bogeys)
{
    std::string text = "kuid <" + kuid + ">\n";
    for (int i = 0; i < bogeys; ++i)
        text += "bogey-" + std::to_string(i) + " <bogey:" + std::to_string(i) + ">\n";
    text += "mesh-table {\n";
    for (int i = 0; i < entries; ++i)
        text += "e" + std::to_string(i) + " {\nmesh m.im\n}\n";
    return text + "}\n";
}

void Write(const path& file, const std::string& bytes)
{
    create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

/// A wagon of `entries` entries with a mesh of 2 MB each, and 30 bogeys of one entry each.
std::string WriteWagon(const path& folder, int entries, std::int32_t animSize)
{
    const path assets = folder / "top/assets";
    Write(assets / "wagon/m.im", MeshOf(2'000'000));
    if (animSize > 0)
        Write(assets / "wagon/anim.kin", AnimOf(animSize));
    for (int i = 0; i < 30; ++i)
    {
        const path bogey = assets / ("b" + std::to_string(i));
        Write(bogey / "config.txt", Config("bogey:" + std::to_string(i), 1, 0));
        Write(bogey / "m.im", MeshOf(20'000));
    }
    Write(assets / "wagon/config.txt", Config("wagon", entries, 30));
    return "top/assets/wagon/config.txt";
}

std::shared_ptr<ZLMIM::FileSystem> Disk() { return nullptr; }
std::shared_ptr<ZLMIM::FileSystem> HostsDisk() { return std::make_shared<ZLMIM::DiskFileSystem>(); }

/// 100,000 folders in memory, with the 30 bogeys in the last of them.
std::shared_ptr<ZLMIM::FileSystem> HostsFolders()
{
    const auto files = std::make_shared<ZLMIM::Fuzzing::MemoryFileSystem>(u"\\top\\assets\\wagon");
    files->Add(u"\\top\\assets\\wagon\\config.txt", Config("wagon", 0, 30));
    for (int i = 0; i < 100'000; ++i)
    {
        const std::string number = std::to_string(1'000'000 + i);
        const std::string kuid = i < 99'970 ? "other" : "bogey:" + std::to_string(i - 99'970);
        files->Add(u"\\top\\assets\\" + std::u16string(number.begin(), number.end()) + u"\\config.txt",
                   Config(kuid, 0, 0));
    }
    return files;
}

} // namespace

std::vector<Hostile> HonestAssets()
{
    const struct
    {
        const char* name;
        int entries;
        std::int32_t animSize;
    } wagons[] = {
        {"60 meshes of 2 MB, an animation of 6 MB, 30 bogeys", 60, 6'000'000},
        {"the same with an animation of 8 MB", 60, 8'000'000},
        {"200 entries with one mesh of 2 MB, 30 bogeys", 200, 0},
    };
    std::vector<Hostile> assets;
    for (const auto& wagon : wagons)
    {
        const auto write = [wagon](const path& folder)
        { return WriteWagon(folder, wagon.entries, wagon.animSize); };
        assets.push_back({wagon.name, Hostile::Kind::HonestAsset, "whole", write, Disk});
        assets.push_back(
            {std::string(wagon.name) + ", by a host", Hostile::Kind::HonestAsset, "whole", write, HostsDisk});
    }
    assets.push_back({"30 bogeys among 100,000 folders of a host", Hostile::Kind::HonestAsset, "whole",
                      [](const path& folder) { return WriteWagon(folder, 0, 0); }, HostsFolders});
    return assets;
}

} // namespace Bench
