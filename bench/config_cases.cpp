#include "bench/cases.h"
#include "bench/made_mesh.h"
#include "zlmim/config/zlm_model.h"

#include <array>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace Bench
{
namespace
{

constexpr int kGroups = 40;
constexpr int kAssets = 100;

/// The folder of an asset; numbers are in the order in which names are sorted.
std::string AssetFolder(int group, int asset)
{
    return "walk/group" + std::to_string(10 + group) + "/asset" + std::to_string(100 + asset);
}

/// About 1 KiB, with the kuid in the third line as authors write it.
std::string Config(const std::string& kuid, const std::string& reference)
{
    return "kind \"traincar\"\r\nusername \"A made-up car\"\r\nkuid " + kuid + "\r\n" + reference +
           "description \"" + std::string(900, 'x') + "\"\r\n";
}

/// Writes two levels of folders. The first asset of the last group contains the reference.
void WriteAssets(const TempFolder& folder)
{
    for (int group = 0; group < kGroups; ++group)
    {
        for (int asset = 0; asset < kAssets; ++asset)
        {
            const std::string kuid = "<kuid:" + std::to_string(group) + ":" + std::to_string(asset) + ">";
            folder.Write(AssetFolder(group, asset) + "/config.txt", Config(kuid, ""));
        }
    }
    const std::string last = "<kuid:" + std::to_string(kGroups - 1) + ":" + std::to_string(kAssets - 1) + ">";
    for (const auto& [name, kuid] :
         {std::pair<std::string, std::string>{"last", last}, {"none", "<kuid:0:9999>"}})
        folder.Write(AssetFolder(0, 0) + "/" + name + ".txt", Config("<kuid:1>", "bogey-0 " + kuid + "\r\n"));
}

void ListFolder(const std::string& path)
{
    DIR* const listing = ::opendir(path.c_str());
    if (!listing)
        throw std::runtime_error("can't list " + path);
    while (const dirent* const entry = ::readdir(listing))
        Keep(entry);
    ::closedir(listing);
}

void ReadHead(const std::string& path)
{
    std::array<char, 1024> head;
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    if (descriptor < 0 || ::read(descriptor, head.data(), head.size()) <= 0)
        throw std::runtime_error("can't read " + path);
    ::close(descriptor);
    Keep(head.data());
}

} // namespace

std::vector<Case> References(const TempFolder& folder)
{
    WriteAssets(folder);
    const std::string root = folder.Path();
    const auto library = [root, &folder](std::u16string_view config, bool isThere)
    {
        return [root, name = folder.Name(config), isThere]
        {
            if (::chdir((root + "/walk").c_str()) != 0)
                throw std::runtime_error("can't go to the assets");
            const auto model = std::make_shared<ZLMIM::ZLMModel>();
            const double seconds = Timed([&] { model->Load(name); });
            if (model->Bogies->Count() != 1 || model->Bogies->Item(1)->kuid().empty() == isThere)
                throw std::runtime_error("the reference led elsewhere");
            return seconds;
        };
    };
    std::vector<std::string> groups;
    std::vector<std::string> configs;
    for (int group = 0; group < kGroups; ++group)
    {
        groups.push_back(root + "/walk/group" + std::to_string(10 + group));
        for (int asset = 0; asset < kAssets; ++asset)
            configs.push_back(root + "/" + AssetFolder(group, asset) + "/config.txt");
    }
    const auto floor = [root, groups, configs]
    {
        return Timed(
            [&]
            {
                ListFolder(root + "/walk");
                for (const auto& group : groups)
                    ListFolder(group);
                for (const auto& config : configs)
                    ReadHead(config);
            });
    };
    return {{"a reference found last among 4,000 folders",
             library(u"walk\\group10\\asset100\\last.txt", true), floor, 1.5},
            {"a reference that is nowhere among them", library(u"walk\\group10\\asset100\\none.txt", false),
             floor, 1.5}};
}

Case MeshTable(const TempFolder& folder)
{
    constexpr int kEntries = 200;
    const MadeMesh made = MakeMesh({.chunks = 4, .vertices = 250, .textures = 2, .attachments = 8});
    std::string config = "kuid <kuid:1:1>\r\nmesh-table\r\n{\r\n";
    std::vector<std::u16string> names;
    for (int i = 0; i < kEntries; ++i)
    {
        const std::string number = std::to_string(i);
        folder.Write("table/part" + number + ".im", made.file);
        names.push_back(folder.Name(u"table\\part" + ZLMIM::FromNativeName(number) + u".im"));
        config.append("  entry")
            .append(number)
            .append("\r\n  {\r\n    mesh part")
            .append(number)
            .append(".im\r\n");
        if (i > 0)
            config += "    att-parent entry" + std::to_string(i / 2) + "\r\n    att a.point7\r\n";
        config += "  }\r\n";
    }
    folder.Write("table/config.txt", config + "}\r\n");

    const auto library = [name = folder.Name(u"table\\config.txt")]
    {
        const auto model = std::make_shared<ZLMIM::ZLMModel>();
        const double seconds = Timed([&] { model->Load(name); });
        if (model->MeshTable()->Count() != kEntries || !model->MeshTable()->Item(kEntries)->Att)
            throw std::runtime_error("the mesh table wasn't read");
        return seconds;
    };
    const auto floor = [names]
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
    return {"a mesh table of 200 entries", library, floor, 1.1};
}

} // namespace Bench
