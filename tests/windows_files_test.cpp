#include "temp_folder.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/native_path.h"
#include "zlmim/reader/windows_name.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <windows.h>

namespace ZLMIM::Testing
{
namespace
{

/// The bytes of the file; "-" if there is none.
std::string Bytes(const std::u16string& name)
try
{
    PathResolver names;
    File file = File::Open(name, names);
    EXPECT_TRUE(DiskFileSystem().FileExists(name));
    std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
    EXPECT_EQ(file.Read({reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()}), bytes.size());
    return bytes;
}
catch (const FileSystemError& error)
{
    EXPECT_EQ(error.Number(), FileSystemError::Code::NoSuchFile);
    EXPECT_FALSE(DiskFileSystem().FileExists(name));
    return "-";
}

TEST(WindowsFile, OpensByEachOfItsNamesOnly)
{
    const TempFolder folder;
    folder.Write("Sub/f", "abc");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path() / "Sub");
    const std::u16string whole = folder.Name(u"Sub\\f");
    std::u16string distant = folder.Name(u"Sub");
    while (distant.size() < 400)
        ASSERT_TRUE(::CreateDirectoryW(CallName(distant += u"\\\u03B1\u4E2D-a-folder").c_str(), nullptr));
    distant += u"\\f";
    ASSERT_TRUE(::CopyFileW(CallName(whole).c_str(), CallName(distant).c_str(), TRUE));
    const auto close = [](HANDLE handle) { ::CloseHandle(handle); };
    const std::unique_ptr<void, decltype(close)> pipe(
        ::CreateNamedPipeW(L"\\\\.\\pipe\\zlmim", PIPE_ACCESS_OUTBOUND, 0, 1, 0, 0, 0, nullptr));

    const std::u16string found[] = {
        whole,           distant,     u"\\\\?\\" + whole, whole.substr(0, 2) + u"F",
        whole.substr(2), u"../SUB/F", u".\\f.",           u"\\\\?\\" + distant};
    for (const std::u16string& name : found)
        EXPECT_EQ(Bytes(name), "abc") << ToUtf8(name);
    const std::u16string missing[] = {u"",
                                      u"f\\",
                                      u"f\\.\\g",
                                      u"*",
                                      u"NUL",
                                      u"con",
                                      u"AUX:",
                                      u".",
                                      u"?",
                                      u"Y:\\nowhere",
                                      u"\\\\.\\pipe\\zlmim",
                                      u"\\\\?\\pipe\\zlmim",
                                      u"\\\\?\\GLOBALROOT\\Device\\Null",
                                      std::u16string(u"f\0g", 3),
                                      std::u16string(40'000, u'x')};
    for (const std::u16string& name : missing)
        EXPECT_EQ(Bytes(name), "-") << ToUtf8(name);

    DiskFileSystem files;
    EXPECT_EQ(files.FileIdentity(whole), files.FileIdentity(u"..\\sub\\F"));
    EXPECT_NE(files.FileIdentity(whole), files.FileIdentity(distant));
    std::filesystem::current_path(before);
    // The folder's destructor can't remove names of this length.
    ASSERT_TRUE(::DeleteFileW(CallName(distant).c_str()));
    while (distant.resize(distant.rfind(u'\\')), distant != folder.Name(u"Sub"))
        ASSERT_TRUE(::RemoveDirectoryW(CallName(distant).c_str()));
}

TEST(WindowsFolder, HasTheAbsolutePathOnDiskAndSortedSubfolders)
{
    const TempFolder folder;
    for (const auto* const name : {"A/b/", "A/C/", "A/a/", "A/file"})
        folder.Write(name);
    const auto a = DiskFileSystem().GetFolder(folder.Name(u"C\\..\\a\\"));
    EXPECT_EQ(a->Path(), folder.Name(u"A"));
    EXPECT_EQ(a->ParentFolder()->Path() + u"\\", folder.Name(u""));
    std::u16string names;
    for (const auto& child : a->SubFolders())
        names += child->Path().substr(a->Path().size());
    EXPECT_EQ(names, u"\\a\\b\\C");
    for (const auto* const missing : {u"", u"\\nowhere\\", u"A\\file", u"NUL"})
        EXPECT_THROW(static_cast<void>(DiskFileSystem().GetFolder(missing)), FileSystemError);

    const auto drive = DiskFileSystem().GetFolder(u"C:\\");
    EXPECT_EQ(drive->Path(), u"C:");
    EXPECT_TRUE(drive->IsRootFolder());
    EXPECT_FALSE(drive->SubFolders().empty());
    EXPECT_EQ(drive->SubFolders().front()->ParentFolder()->Path(), u"C:");
    EXPECT_FALSE(IsRoot(ToNativePath(u"\\\\server\\share\\a")));
    EXPECT_TRUE(IsRoot(ToNativePath(u"\\\\server\\share")));
}

} // namespace
} // namespace ZLMIM::Testing
