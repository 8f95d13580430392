#include "asset_folder.h"
#include "good_files.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/text.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace ZLMIM::Testing
{
namespace
{

/// A host's file system: reads the disk, and calls `onGetFolder` before it returns a folder.
class HostFileSystem : public FileSystem
{
public:
    std::function<void()> onGetFolder = [] {};

    [[nodiscard]] bool FileExists(const std::u16string& path) override { return mDisk.FileExists(path); }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override
    {
        return mDisk.OpenTextFile(path);
    }
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override
    {
        onGetFolder();
        return mDisk.GetFolder(path);
    }
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override
    {
        return mDisk.FileIdentity(path);
    }

private:
    DiskFileSystem mDisk;
};

/// A mesh of one chunk with this many vertices, 32 bytes each.
std::string MeshWithVertices(std::int32_t count)
{
    const std::array<std::int32_t, 5> counts = {count, 0, 0, 0, 0};
    const auto geometry =
        Bytes().Long(200).Zeros(8).Record(counts).Long(0).Zeros(static_cast<std::size_t>(count) * 32);
    return MeshHeader(1).Block("CHNK", Bytes().Long(1).Long(1).Block("GEOM", geometry)).Str();
}

std::string Table(int entries, const std::string& keys)
{
    std::string table = "mesh-table {\n";
    for (int i = 0; i < entries; ++i)
        table += "e" + std::to_string(i) + " {\n" + keys + "}\n";
    return table + "}\n";
}

/// The text of the BoundsError that ended the load; empty if it threw no BoundsError.
std::string Load(const AssetFolder& folder, ZLMModel& model)
try
{
    model.Load(folder.WagonName());
    return "";
}
catch (const BoundsError& error)
{
    EXPECT_EQ(std::string(error.what()).substr(0, ToUtf8(error.File()).size()), ToUtf8(error.File()));
    return ToUtf8(error.File().substr(error.File().rfind(u'\\') + 1)) + " " +
           std::to_string(error.Position());
}

TEST(LoadLimits, EndTheLoadWithAnErrorThatNamesTheFile)
{
    const LoadLimits wide;
    const struct
    {
        const char* name;
        std::string config;
        LoadLimits limits;
        std::string error;
        std::int32_t entries;
    } cases[] = {
        {"all fits", Table(8, "mesh m.im\n"), {400'000, 600'000}, "", 8},
        {"one vertex array too many", Table(9, "mesh m.im\n"), {300'000, wide.Work}, "m.im 300000", 8},
        {"one file read too many", Table(9, "mesh m.im\n"), {wide.Memory, 200'000}, "m.im 200000", 5},
        {"entries without meshes", Table(199, ""), {70'000, wide.Work}, "config.txt 70000", 0},
        {"a text", "author " + std::string(9'000, 'x') + "\n", {20'000, wide.Work}, "config.txt 20000", 0},
        {"a quoted text",
         "author \"" + std::string(9'000, '\n') + "\"\n\n",
         {20'000, wide.Work},
         "config.txt 20000",
         0},
        {"bones", Table(1, "mesh bones.im\n"), {9'000, wide.Work}, "bones.im 9000", 1},
        {"frame tables",
         Table(1, "mesh m.im\nanim frames.kin\n"),
         {99'000, wide.Work},
         "frames.kin 99000",
         1},
        {"folders visited",
         Table(1, "mesh m.im\n") + "bogey x\nbogey x\n",
         {wide.Memory, 100'000},
         "config.txt 100000",
         1},
        {"a neighbour's file",
         Table(1, "mesh m.im\n") + "bogey y\n",
         {wide.Memory, 80'000},
         "config.txt 80000",
         1},
        {"references to the same", "bogey <r>\n" + Table(1, ""), {wide.Memory, 40'000}, "", 1},
    };
    AssetFolder folder;
    folder.Write("wagon/m.im", MeshWithVertices(1'000))
        .Write("wagon/bones.im", MeshWith(MeshBone("r", 100)).Str())
        .Write("wagon/frames.kin", AnimWith(3'000, AnimBone("r", 1, AnimBone("s"))).Str())
        .Write("r/config.txt", "kuid <r>\n")
        .Write("long/config.txt", std::string(40'000, 'x'));
    for (int i = 0; i < 30; ++i)
        folder.Write("z" + std::to_string(i) + "/", {});
    for (const auto& c : cases)
    {
        for (const bool isHosts : {false, true})
        {
            SCOPED_TRACE(std::string(c.name) + (isHosts ? ", through a host's service" : ""));
            folder.Wagon(c.config);
            const auto model =
                std::make_shared<ZLMModel>(isHosts ? std::make_shared<HostFileSystem>() : nullptr);
            model->Limits = c.limits;
            const std::string error = Load(folder, *model);
            EXPECT_EQ(error, c.error);
            EXPECT_GE(model->MeshTable()->Count(), c.entries);
        }
    }
}

TEST(ZLMModel, SurvivesAHostThatChangesItDuringALoad)
{
    AssetFolder folder;
    folder.Wagon("pantograph x\nbogey y\nauthor late\n" + Table(1, "mesh m.im\n"));
    const auto files = std::make_shared<HostFileSystem>();
    auto model = std::make_shared<ZLMModel>(files);
    const struct
    {
        const char* name;
        std::function<void()> change;
        std::u16string_view author;
    } cases[] = {
        {"clears the pantograph", [&] { model->Pantograph.reset(); }, u"late"},
        {"replaces a list", [&] { model->Bogies = std::make_shared<Collection<ZLMModel>>(); }, u"late"},
        {"clears a list", [&] { model->Bogies.reset(); }, u""},
        {"clears the names", [&] { model->BogieNames.reset(); }, u""},
        {"loads the model anew",
         [&, isNested = false]() mutable
         {
             if (!std::exchange(isNested, true))
                 model->Load(folder.WagonName());
         },
         u"late"},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        files->onGetFolder = c.change;
        try
        {
            model->Load(folder.WagonName());
        }
        catch (const std::invalid_argument&)
        {
            EXPECT_EQ(c.author, u"");
        }
        EXPECT_EQ(model->Author, c.author);
    }
    files->onGetFolder = [&] { model.reset(); };
    const std::weak_ptr<ZLMModel> alive = model;
    model->Load(folder.WagonName());
    EXPECT_TRUE(alive.expired());
}

TEST(FindConfigFile, ThrowsIfASearchFailsAtAnyDepth)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:0>\n").Write("z/config.txt", "open \"");
    for (int i = 0; i < 40; ++i)
        folder.Write("c" + std::to_string(i) + "/config.txt",
                     "kuid <kuid:" + std::to_string(i) +
                         ">\nbogey <kuid:" + std::to_string(i == 30 ? 99 : i + 1) + ">\n");
    // The 32nd model is too deep to load further models, but still searches for its reference, which no asset
    // has. That search reads z/config.txt, whose quotation mark isn't closed.
    const auto model = std::make_shared<ZLMModel>();
    EXPECT_EQ(folder.Load(*model), "FileSystemError 62");
}

} // namespace
} // namespace ZLMIM::Testing
