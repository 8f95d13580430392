#include "temp_folder.h"
#include "zlmim/reader/path_resolver.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

using namespace std::string_view_literals;

/// A temporary folder with these entries, which is the working folder while in scope.
class WorkingFolder
{
public:
    explicit WorkingFolder(const std::vector<std::string>& entries)
    {
        for (const std::string& entry : entries)
            mFolder.Write(entry);
        std::filesystem::current_path(mFolder.Path());
    }
    ~WorkingFolder() { std::filesystem::current_path(mBefore); }

private:
    std::filesystem::path mBefore = std::filesystem::current_path();
    TempFolder mFolder;
};

std::string NativePath(std::u16string_view name)
{
    PathResolver names;
    const bool isFolder = name.ends_with(u'\\');
    const auto found = names.Find(name, isFolder ? FoundFile::Kind::Folder : FoundFile::Kind::File);
    return found ? found->nativePath : "";
}

TEST(PathResolver, FindsTheEntryOfAName)
{
    const struct
    {
        const char* name;
        std::vector<std::string> entries;
        std::u16string_view asked;
        std::string_view found;
    } cases[] = {
        // The exact name comes first.
        {"among several", {"A.im", "a.im"}, u"a.im", "a.im"},
        {"inside a folder", {"AB/c", "ab/c", "Ab/c"}, u"ab\\c", "ab/c"},
        {"through its parent", {"A/", "B/f"}, u"A\\..\\B\\f", "A/../B/f"},
        // Letter case is ignored part by part.
        {"all parts", {"Wagon/BODY.im"}, u"wAGON\\body.IM", "Wagon/BODY.im"},
        {"first in byte order", {"a.IM", "A.im", "a.iM"}, u"a.im", "A.im"},
        {"only in the last folder", {"AB/x", "Ab/x", "aB/f"}, u"ab\\F", "aB/f"},
        {"not in the exact folder", {"A/", "a/f"}, u"A\\f", "a/f"},
        {"parent and own folder", {"A/", "B/f"}, u"a\\..\\.\\b\\F", "A/.././B/f"},
        {"trailing separator", {"Folder/"}, u"folder\\", "Folder/"},
        // Entries are compared as UTF-8 and as Windows-1252.
        {"UTF-8", {"W\xC3\x84G.im"}, u"w\u00E4g.IM", "W\xC3\x84G.im"},
        {"Windows-1252", {"W\xC4G.im"}, u"w\u00E4g.IM", "W\xC4G.im"},
        {"UTF-8 decoded as Windows-1252",
         {"w\xC3\xA4\xE2\x82\xAC.im"},
         u"W\u00C3\u00A4\u00E2\u201A\u00AC.IM",
         "w\xC3\xA4\xE2\x82\xAC.im"},
        {"a capital outside Windows-1252", {"\xCE\x91.im"}, u"\u03B1.im", ""},
        // Entries of another kind are skipped.
        {"a folder before the file", {"BODY.IM/", "body.im"}, u"Body.im", "body.im"},
        {"a folder of the exact name", {"Body.im/", "body.im"}, u"Body.im", "body.im"},
        {"a file before the folder", {"AB", "aB/f"}, u"ab\\f", "aB/f"},
        {"nothing but a folder", {"body.im/"}, u"body.im", ""},
        // Other names lead to nothing.
        {"another name", {"a.im"}, u"b.im", ""},
        {"start of a name", {"a.im"}, u"A.i", ""},
        {"empty", {"a.im"}, u"", ""},
        {"zero inside", {"a.im"}, u"a.im\0b"sv, ""},
        {"zero inside, other case", {"a.im"}, u"A.im\0"sv, ""},
        {"separator after a file", {"file"}, u"FILE\\", ""},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        const WorkingFolder folder(c.entries);
        EXPECT_EQ(NativePath(c.asked), c.found);
    }
}

TEST(PathResolver, SearchesAPinnedFolderOnly)
{
    const WorkingFolder folder({"Wagon/config.txt", "Wagon/Body.im", "wagon/config.txt", "wagon/bogey.im"});
    PathResolver names;
    const auto find = [&](std::u16string_view name)
    {
        const auto found = names.Find(name, FoundFile::Kind::File);
        return found ? found->nativePath : "";
    };
    names.PinFolderOf(u"Wagon\\config.txt", "Wagon/config.txt");
    EXPECT_EQ(find(u"wagon\\body.im"), "Wagon/Body.im");
    EXPECT_EQ(find(u"wagon\\BOGEY.im"), "");
    // If both folders are pinned, the name is as ambiguous as before.
    names.PinFolderOf(u"wagon\\config.txt", "wagon/config.txt");
    EXPECT_EQ(find(u"wagon\\BOGEY.im"), "wagon/bogey.im");
}

TEST(PathResolver, VisitsEachFolderOnceDespiteLinks)
{
    const WorkingFolder folder({"f"});
    std::filesystem::create_directory_symlink(".", "loop");
    std::filesystem::create_directory_symlink(".", "LOOP");
    std::u16string name;
    for (int i = 0; i < 30; ++i)
        name += u"Loop\\";

    EXPECT_EQ(NativePath(name + u"g"), "");
    EXPECT_EQ(NativePath(name + u"F").substr(0, 10), "LOOP/LOOP/");
}

TEST(PathResolver, IgnoresLetterCaseInNamesOfUpTo64Parts)
{
    std::string path;
    std::u16string name;
    for (int i = 0; i < 63; ++i)
    {
        path += "a/";
        name += u"A\\";
    }
    const WorkingFolder folder({path + "f", path + "a/f"});
    EXPECT_EQ(NativePath(name + u"f"), path + "f");
    EXPECT_EQ(NativePath(name + u"a\\f"), "");
}

TEST(FromNativeName, ReadsUtf8OrElseWindows1252)
{
    EXPECT_EQ(FromNativeName("w\xC3\xA4g"), u"w\u00E4g");
    EXPECT_EQ(FromNativeName("w\xE4g\x80"), u"w\u00E4g\u20AC");
}

} // namespace
} // namespace ZLMIM::Testing
