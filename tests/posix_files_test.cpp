#include "asset_folder.h"
#include "outcome.h"
#include "temp_folder.h"
#include "zlmim/anim/anim.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/errors.h"

#include <fcntl.h>
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
    ::alarm(20); // ends the test if a load waits for a writer of the pipe
    Anim anim;
    for (const auto* const name : {u"dead link", u"pipe"})
        EXPECT_FALSE(anim.Load(folder.Name(name)));
    EXPECT_EQ(anim.FileSize, 0);
    EXPECT_FALSE(anim.Load(folder.Name(u"link")));
    EXPECT_EQ(anim.FileSize, 3);
    ::alarm(0);
}

TEST(DiskFolder, HasAnAbsolutePathAndSortedSubfolders)
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
    for (const std::u16string& missing :
         {std::u16string(), std::u16string(u"\\nowhere\\"), folder.Name(u"A\\file")})
        EXPECT_EQ(OutcomeOf([&] { return DiskFileSystem().GetFolder(missing); }), "FileSystemError 76");
}

TEST(DiskFileSystem, DistinguishesMissingFromForbiddenFiles)
{
    const TempFolder folder;
    folder.Write("secret", "s");
    std::filesystem::permissions(folder.Path() / "secret", std::filesystem::perms::none);
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && ::seteuid(65'534) != 0)
        GTEST_SKIP() << "root may read everything";
    const auto open = [&](std::u16string_view name)
    { return OutcomeOf([&] { return DiskFileSystem().OpenTextFile(folder.Name(name)); }); };
    const std::string secret = open(u"secret");
    const std::string missing = open(u"missing");
    ASSERT_EQ(::seteuid(::getuid()), 0);
    EXPECT_EQ(secret, "FileSystemError 70");
    EXPECT_EQ(missing, "FileSystemError 53");
}

TEST(DiskFileSystem, KeepsItsFilesFromChildProcesses)
{
    const TempFolder folder;
    folder.Write("f", "x");
    const int next = ::open("/", O_RDONLY | O_CLOEXEC);
    ::close(next);
    const auto stream = DiskFileSystem().OpenTextFile(folder.Name(u"f"));
    EXPECT_EQ(::fcntl(next, F_GETFD), FD_CLOEXEC);
}

TEST(FindConfigFile, ReadsTheDiskAgainInEachLoad)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\n");
    const auto model = std::make_shared<ZLMModel>(std::make_shared<DiskFileSystem>());
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"");
    folder.Write("z/config.txt", "kuid <kuid:1:2>\nauthor z\n");
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"z");
}

TEST(FindConfigFile, ReadsFolderNamesAsUtf8BeforeWindows1252)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\n").Write("\xE9/config.txt", "kuid <kuid:1:2>\nauthor 1252\n");
    const auto model = folder.Loaded();
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"1252");
    // Now the path of that folder leads to another one.
    folder.Write("\xC3\xA9/config.txt", "kuid <kuid:1:3>\nauthor UTF-8\n");
    EXPECT_EQ(folder.Load(*model), "");
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"");
}

} // namespace
} // namespace ZLMIM::Testing
