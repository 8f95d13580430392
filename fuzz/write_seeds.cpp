// Writes the seeds of the fuzz targets into the given folder, which gets a subfolder for each target, with
// its name.

#include "fuzz/asset_tree.h"
#include "tests/good_files.h"
#include "tools/sample/sample_assets.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

using ZLMIM::Fuzzing::TreeFile;
using ZLMIM::Fuzzing::WriteTree;

constexpr std::string_view kWagon = "assets\\wagon\\config.txt";

/// The sample, wagon first. Meshes and animations have only names: the fuzz target has their files on the
/// disk.
std::string SampleTree()
{
    std::vector<TreeFile> files;
    for (const auto& [name, bytes] : Sample::SampleAssets())
    {
        files.push_back({name, name.ends_with(".txt") ? bytes : std::string()});
        std::replace(files.back().name.begin(), files.back().name.end(), '/', '\\');
    }
    std::stable_partition(files.begin(), files.end(), [](const auto& file) { return file.name == kWagon; });
    files.push_back({"assets\\wagon\\anim.kin", {}});
    return WriteTree(files);
}

std::string Kuid(int level, char letter) { return "<kuid:" + std::to_string(level) + ":" + letter + ">"; }

/// Levels of assets, each of which refers to all assets of the next level. The last level refers to the level
/// `next`.
std::string Levels(int levels, std::string_view letters, int next)
{
    std::vector<TreeFile> files;
    for (int level = 0; level < levels; ++level)
    {
        for (const char letter : letters)
        {
            std::string config = "kuid " + Kuid(level, letter) + "\n";
            for (const char below : letters)
                config += "bogey-" + std::string(1, below) + " " +
                          Kuid(level + 1 < levels ? level + 1 : next, below) + "\n";
            files.push_back({"assets\\" + std::to_string(level) + letter + "\\config.txt", config});
        }
    }
    return WriteTree(files);
}

/// One example of each construct that can lead a load astray.
std::string TroubledTree()
{
    const auto table = [](std::string_view entry)
    { return "mesh-table {\na {\n" + std::string(entry) + "}\n}\n"; };
    return WriteTree({
        {std::string(kWagon), "kuid <kuid:1:1>\nbogey <kuid:1:2>\nbogey <kuid:1:2>\npantograph <kuid:1:3>\n"
                              "bogey-1 <kuid:1:4>\n" +
                                  table("mesh body.im\natt-parent A\natt a.load\n")},
        {"assets\\kuid 1 2\\config.txt", table("mesh none.lm\nanim none.kin\n")},
        {"assets\\kuid 1 2\\none.lm.txt", "mesh(\"1.0\")\nname=\"a.im\";\n"},
        {"other\\p\\config.txt", "kuid <kuid:1:3>\nasset-filename body\ndescription \"never closed\n"},
        {"assets\\q\\config.txt", "kuid <kuid:1:4>\n" + table("mesh ../wagon/short.im\n")},
        {"assets\\z\\config.txt", {}, false},
        {"assets\\y\\", {}},
    });
}

using Seeds = std::map<std::string, std::string>;

Seeds AllSeeds()
{
    Seeds seeds = {
        {"mesh_fuzzer/good.im", ZLMIM::Testing::GoodMesh().Str()},
        {"anim_fuzzer/good.kin", ZLMIM::Testing::GoodAnim().Str()},
        {"asset_fuzzer/sample", SampleTree()},
        {"asset_fuzzer/cycle", Levels(3, "a", 0)},
        {"asset_fuzzer/lattice", Levels(4, "ab", 9)},
        {"asset_fuzzer/troubled", TroubledTree()},
    };
    const std::map<std::string, std::string> targets = {
        {".im", "mesh_fuzzer/"}, {".kin", "anim_fuzzer/"}, {".txt", "config_fuzzer/"}};
    for (auto& [name, bytes] : Sample::SampleAssets())
    {
        const std::filesystem::path path = name;
        const std::string folder = path.parent_path().filename().string();
        seeds.emplace(targets.at(path.extension()) + folder + "-" + path.filename().string(), bytes);
    }
    return seeds;
}

} // namespace

int main(int argc, char** argv)
try
{
    if (argc != 2)
    {
        std::cerr << "usage: write_seeds FOLDER\n";
        return 2;
    }
    for (const auto& [name, bytes] : AllSeeds())
    {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file;
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file.open(path, std::ios::binary);
        file << bytes;
        file.close();
    }
    return 0;
}
catch (const std::exception& error)
{
    std::cerr << "write_seeds: " << error.what() << '\n';
    return 1;
}
