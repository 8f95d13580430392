#include "asset_folder.h"
#include "temp_folder.h"
#include "zlmim/anim/anim.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/errors.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace ZLMIM::Testing
{
namespace
{

TEST(FileCursorLoadFile, FollowsLinksAndWaitsForNoPipe)
{
    const TempFolder folder;
    folder.Write("three", "JIR");
    std::filesystem::create_symlink("three", folder.Path() / "link");
    std::filesystem::create_symlink("nothing", folder.Path() / "dead link");
    ASSERT_EQ(::mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    ::alarm(20); // ends a load that waits for a pipe's writer
    Anim anim;
    for (const auto* const name : {u"dead link", u"pipe"})
        EXPECT_FALSE(anim.Load(folder.Name(name)));
    EXPECT_EQ(anim.FileSize, 0);
    EXPECT_FALSE(anim.Load(folder.Name(u"link")));
    EXPECT_EQ(anim.FileSize, 3);
    ::alarm(0);
}

TEST(DiskFolder, IsAbsoluteSortedAndSpeltAsOnDisk)
{
    const TempFolder folder;
    for (const auto* const name : {"A/b/", "A/C/", "A/a/", "A/B/", "A/file"})
        folder.Write(name);
    const auto a = DiskFileSystem().GetFolder(folder.Name(u"a\\"));
    EXPECT_EQ(a->Path(), folder.Name(u"A"));
    EXPECT_FALSE(a->IsRootFolder());
    EXPECT_EQ(a->ParentFolder()->Path() + u"\\", folder.Name(u""));
    std::u16string names;
    for (const auto& child : a->SubFolders())
        names += child->Path().substr(a->Path().size());
    EXPECT_EQ(names, u"\\a\\B\\b\\C");
    EXPECT_EQ(DiskFileSystem().GetFolder(folder.Name(u"A\\b\\..\\c"))->Path(), folder.Name(u"A\\C"));
    const auto root = DiskFileSystem().GetFolder(u"\\");
    EXPECT_TRUE(root->IsRootFolder());
    EXPECT_EQ(root->Path(), u"");
    for (const auto* const missing : {u"", u"\\nowhere\\", u"A\\file"})
        EXPECT_THROW(static_cast<void>(DiskFileSystem().GetFolder(missing)), FileSystemError);
}

TEST(FindConfigFile, SeesWhatStandsThereAtEachLoad)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\n");
    // One service for all loads, and one that a load can't have: the lists are new before it is asked for.
    auto service = std::make_shared<DiskFileSystem>();
    const auto make = [&]() -> std::shared_ptr<FileSystem>
    { return service ? service : throw std::runtime_error("no service"); };
    const auto model = std::make_shared<ZLMModel>(make);
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"");
    folder.Write("z/config.txt", "kuid <kuid:1:2>\nauthor z\n");
    // Its name is no UTF-8: another asset's, by the path that the service gives.
    folder.Write("\xE9/config.txt", "kuid <kuid:1:2>\nauthor wrong\n");
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"z");
    service.reset();
    EXPECT_THROW(model->Load(folder.WagonName()), std::runtime_error);
    EXPECT_EQ(model->Bogies->Count(), 0);
}

} // namespace
} // namespace ZLMIM::Testing
