#include "bench/cases.h"
#include "bench/made_mesh.h"
#include "zlmim/config/zlm_model.h"

#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace Bench
{
namespace
{

constexpr int kAssets = 100;

/// About 1 KiB, with the kuid in the third line as authors write it.
std::string Config(const std::string& kuid, const std::string& reference)
{
    return "kind \"traincar\"\r\nusername \"A made-up car\"\r\nkuid " + kuid + "\r\n" + reference +
           "description \"" + std::string(900, 'x') + "\"\r\n";
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

/// Folders of assets in groups of 100, two levels below a folder. The first asset has two more config files:
/// one refers to the last asset, one to an asset that doesn't exist.
class Assets
{
public:
    /// Writes the files.
    Assets(const TempFolder& folder, const std::string& top, int groups) : mTop(folder.Path() / top)
    {
        for (int group = 0; group < groups; ++group)
        {
            const std::string groupEntry = top + "/group" + std::to_string(100 + group);
            mGroups.push_back(folder.Path() / groupEntry);
            for (int asset = 0; asset < kAssets; ++asset)
            {
                const std::string kuid = "<kuid:" + std::to_string(group) + ":" + std::to_string(asset) + ">";
                const std::string entry = groupEntry + "/asset" + std::to_string(100 + asset) + "/config.txt";
                folder.Write(entry, Config(kuid, ""));
                mConfigs.push_back(folder.Path() / entry);
            }
        }
        const std::string last =
            "<kuid:" + std::to_string(groups - 1) + ":" + std::to_string(kAssets - 1) + ">";
        for (const auto& [name, kuid] :
             {std::pair<std::string, std::string>{"last", last}, {"none", "<kuid:0:9999>"}})
        {
            folder.Write(top + "/group100/asset100/" + name + ".txt",
                         Config("<kuid:1>", "bogey-0 " + kuid + "\r\n"));
        }
        mReferrer = folder.Name(ZLMIM::FromNativeName(top) + u"\\group100\\asset100\\");
    }

    /// Loads the config file whose reference is to the last asset, or the one whose reference leads nowhere.
    [[nodiscard]] double Load(bool isThere) const
    {
        if (::chdir(mTop.c_str()) != 0)
            throw std::runtime_error("can't go to the assets");
        const auto model = std::make_shared<ZLMIM::ZLMModel>();
        const double seconds = Timed([&] { model->Load(mReferrer + (isThere ? u"last.txt" : u"none.txt")); });
        if (model->Bogies->Count() != 1 || model->Bogies->Item(1)->kuid().empty() == isThere)
            throw std::runtime_error("the reference led elsewhere");
        return seconds;
    }

    /// Lists the folders, and reads the beginnings of all config files.
    [[nodiscard]] double Visit() const
    {
        return Timed(
            [&]
            {
                ListFolder(mTop);
                for (const auto& group : mGroups)
                    ListFolder(group);
                for (const auto& config : mConfigs)
                    ReadHead(config);
            });
    }

private:
    std::string mTop;
    std::vector<std::string> mGroups;
    std::vector<std::string> mConfigs;
    std::u16string mReferrer;
};

/// As many folders in 100 searches, in 10, and in one.
Growth SearchGrowth(const TempFolder& folder)
{
    constexpr int kGroups = 100;
    Growth growth = {"a reference among 100, 1,000 and 10,000 folders", "folder", {}};
    int times = kGroups;
    for (Sized& sized : growth.sizes)
    {
        std::vector<Assets> tops;
        for (int i = 0; i < times; ++i)
            tops.emplace_back(folder, "of" + std::to_string(times) + "/" + std::to_string(i),
                              kGroups / times);
        const auto sum = [tops](const auto& one)
        {
            double seconds = 0;
            for (const Assets& assets : tops)
                seconds += one(assets);
            return seconds;
        };
        sized = {kGroups * kAssets,
                 [sum] { return sum([](const Assets& assets) { return assets.Load(false); }); },
                 [sum] { return sum([](const Assets& assets) { return assets.Visit(); }); }};
        times /= 10;
    }
    return growth;
}

/// A config file whose mesh table has `count` entries, for the meshes `part0.im` and so on from `first`.
std::string TableConfig(int first, int count)
{
    std::string config = "kuid <kuid:1:1>\r\nmesh-table\r\n{\r\n";
    for (int i = 0; i < count; ++i)
    {
        config.append("  entry").append(std::to_string(i));
        config.append("\r\n  {\r\n    mesh part").append(std::to_string(first + i)).append(".im\r\n");
        if (i > 0)
            config += "    att-parent entry" + std::to_string(i / 2) + "\r\n    att a.point7\r\n";
        config += "  }\r\n";
    }
    return config + "}\r\n";
}

/// Meshes in a folder, and the config files for them.
class Tables
{
public:
    Tables(const TempFolder& folder, std::string subfolder, int meshes, const MadeMesh& mesh)
        : mFolder(folder), mSubfolder(std::move(subfolder))
    {
        for (int i = 0; i < meshes; ++i)
        {
            const std::string entry = "part" + std::to_string(i) + ".im";
            folder.Write(mSubfolder + "/" + entry, mesh.file);
            mMeshes.push_back(Name(entry));
        }
    }

    /// All meshes in as many tables of so many entries, which are kept.
    [[nodiscard]] Side Library(int entries) const
    {
        std::vector<std::u16string> configs;
        for (int first = 0; first < static_cast<int>(mMeshes.size()); first += entries)
        {
            const std::string entry = "of" + std::to_string(entries) + "-" + std::to_string(first) + ".txt";
            mFolder.Write(mSubfolder + "/" + entry, TableConfig(first, entries));
            configs.push_back(Name(entry));
        }
        return [configs, entries]
        {
            std::vector<std::shared_ptr<ZLMIM::ZLMModel>> models;
            const double seconds = Timed(
                [&]
                {
                    for (const auto& config : configs)
                        models.emplace_back(std::make_shared<ZLMIM::ZLMModel>())->Load(config);
                });
            for (const auto& model : models)
            {
                if (model->MeshTable()->Count() != entries || !model->MeshTable()->Item(entries)->Att)
                    throw std::runtime_error("the mesh table wasn't read");
            }
            return seconds;
        };
    }

    /// Loads the meshes by themselves.
    [[nodiscard]] Side Floor() const { return LoadMeshes(mMeshes); }

private:
    [[nodiscard]] std::u16string Name(const std::string& entry) const
    {
        return mFolder.Name(ZLMIM::FromNativeName(mSubfolder + "\\" + entry));
    }

    const TempFolder& mFolder;
    std::string mSubfolder;
    std::vector<std::u16string> mMeshes;
};

} // namespace

Measures References(const TempFolder& folder)
{
    const Assets assets(folder, "walk", 40);
    const Side floor = [assets] { return assets.Visit(); };
    return {
        {{"a reference found last among 4,000 folders", [assets] { return assets.Load(true); }, floor, 1.25},
         {"a reference that is nowhere among them", [assets] { return assets.Load(false); }, floor, 1.25}},
        {SearchGrowth(folder)}};
}

Measures MeshTable(const TempFolder& folder)
{
    constexpr int kEntries = 200;
    const Tables tables(folder, "table", kEntries,
                        MakeMesh({.chunks = 4, .vertices = 250, .textures = 2, .attachments = 8}));

    constexpr int kMost = 10'000;
    const Tables growing(folder, "growth", kMost,
                         MakeMesh({.vertices = 20, .textures = 2, .attachments = 8}));
    Growth growth = {"a mesh table of 100, 1,000 and 10,000 entries", "entry", {}};
    int entries = kMost / 100;
    for (Sized& sized : growth.sizes)
    {
        sized = {kMost, growing.Library(entries), growing.Floor()};
        entries *= 10;
    }
    return {{{"a mesh table of 200 entries", tables.Library(kEntries), tables.Floor(), 1.05}}, {growth}};
}

} // namespace Bench
