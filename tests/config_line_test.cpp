#include "temp_folder.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/lod_list.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

using namespace std::string_view_literals;

TEST(DiskTextStream, RecognisesEachLineEnd)
{
    const std::string piece(4'095, 'x'); // one byte less than the stream's buffer
    const std::u16string wide(4'095, u'x');
    const std::pair<std::string, std::vector<std::u16string>> cases[] = {
        {"", {}},
        {"a", {u"a"}},
        {"a\nb\r\nc\rd\n", {u"a", u"b", u"c", u"d"}},
        {"\n\r\r\n\n\r", {u"", u"", u"", u"", u""}},
        {piece + "\r\nb", {wide, u"b"}},
        {piece + "yz\r", {wide + u"yz"}},
        {"\x80\x81\xEF\xBB\xBF", {u"\u20AC\u0081\u00EF\u00BB\u00BF"}},
    };
    const TempFolder folder;
    for (const auto& [bytes, lines] : cases)
    {
        SCOPED_TRACE(bytes.substr(0, 20));
        folder.Write("f", bytes);
        const auto stream = DiskFileSystem().OpenTextFile(folder.Name(u"f"));
        std::vector<std::u16string> found;
        while (!stream->AtEndOfStream())
            found.push_back(stream->ReadLine());
        EXPECT_EQ(found, lines);
        EXPECT_THROW(static_cast<void>(stream->ReadLine()), FileSystemError);
    }
}

TEST(ReadConfigLine, SplitsKeyAndValue)
{
    const struct
    {
        std::string_view file;
        std::u16string_view key;
        std::u16string_view value;
        std::u16string_view rest; // the next line; "-" if reading this line throws
    } cases[] = {
        {"\nx", u"", u"", u"x"},
        {" \t \nx", u"", u"", u"x"},
        {"}\nx", u"}", u"", u"x"},
        {"Kind\t  A Word \nx", u"kind", u"A Word", u"x"},
        {"Author \nx", u"author", u"", u"x"},
        {"\xEF\xBB\xBFkind w\nx", u"kind", u"w", u"x"},
        {"\xEF\xBB\xBF kind w\nx", u"", u"kind w", u"x"},
        {"k \"\"\nx", u"k", u"", u"x"},
        {"k \" a \" \nx", u"k", u" a ", u"x"},
        {"k \"a\" b\" c\"\nx", u"k", u"a\" b\" c", u"x"},
        {"k \"a\tb\n c\td\"\nx", u"k", u"a b\r\n c\td", u"x"},
        {"k \"a\" b\nc\" \nd\"\nx", u"k", u"a\" b\r\nc\" \r\nd", u"x"},
        {"k \"\na\"\nx", u"k", u"\r\na", u"x"},
        {"k \"a\nb\"", u"k", u"\"a\r\nb\"", u""},
        {"k \"a\nb", u"k", u"\"a\r\nb", u""},
        {"k \"a\"", u"k", u"a", u""},
        {"k \"a", u"", u"", u"-"},
        {"\"k a\" b\nx", u"\"k", u"a\" b", u"x"},
    };
    const TempFolder folder;
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.file);
        folder.Write("f", c.file);
        const auto stream = DiskFileSystem().OpenTextFile(folder.Name(u"f"));
        LoadBudget budget;
        LineReader lines(*stream, budget);
        ConfigLine line = {u"old", u"old", 0, 0};
        if (c.rest == u"-")
        {
            EXPECT_THROW(ReadConfigLine(lines, line), FileSystemError);
            continue;
        }
        ReadConfigLine(lines, line);
        EXPECT_EQ(line.Key, c.key);
        EXPECT_EQ(line.Value, c.value);
        EXPECT_EQ(line.FirstLine, 1);
        EXPECT_EQ(line.LastLine, lines.LineCount());
        EXPECT_EQ(stream->AtEndOfStream() ? u"" : stream->ReadLine(), c.rest);
    }
}

TEST(ReadConfigLine, JoinsAValueOfAnyNumberOfLines)
{
    // More than two of the parts that a long value is joined from.
    const std::size_t lineCount = 600'000;
    const TempFolder folder;
    folder.Write("f", "k \"" + std::string(lineCount, '\n') + "z\"\nx");
    const auto stream = DiskFileSystem().OpenTextFile(folder.Name(u"f"));
    LoadBudget budget;
    LineReader lines(*stream, budget);
    ConfigLine line;
    ReadConfigLine(lines, line);
    ASSERT_EQ(line.Value.size(), 2 * lineCount + 1);
    EXPECT_EQ(line.Value.find_first_not_of(u"\r\n"), 2 * lineCount);
    EXPECT_EQ(line.Value.back(), u'z');
    EXPECT_EQ(line.LastLine, static_cast<std::int64_t>(lineCount) + 1);
}

TEST(FirstConfigValue, KeepsNoMoreOfALineThanASearchNeeds)
{
    const std::string blanks(9'000, ' ');
    const std::string words(9'000, 'w');
    const std::pair<std::string, std::string> cases[] = {
        {"kuid <a>\n", "<a>"},
        {blanks + "d \"\nkuid no\"\nkuid <a>\n", "<a>"},
        {"d \"" + blanks + "\nkuid no\"\nkuid <a>\n", "<a>"},
        {"d " + words + "\nkuid <a>\n", "<a>"},
        {words + "\nkuid <a>\n", "<a>"},
        {"d \"" + words + "\nkuid no\n" + words + "\"\nkuid <a>\n", "<a>"},
        {"d \"" + words + "\"\nkuid <a>\n", "<a>"},
        {"d \"" + words + "\" \nkuid <a>\n", "<a>"},
        {"d \"a\n" + words + "\" \nkuid no\n\"\nkuid <a>\n", "<a>"},
        {"kuid-table x\nkuid\n", ""},
        {"x <a>\n", "no such key"},
        {blanks + "kuid <a>\n", "BoundsError 4096"},
        {"kuid <a>" + blanks + "\n", "BoundsError 4096"},
        {"kuid " + words + "\n", "BoundsError 4096"},
        {"kuid" + blanks + "<a>\n", "BoundsError 4096"},
        {"kuid \"<a>\n" + words + "\"\nx\n", "BoundsError 4096"},
    };
    const TempFolder folder;
    for (const auto& [file, outcome] : cases)
    {
        SCOPED_TRACE(file.substr(0, 20));
        folder.Write("f", file);
        const auto stream = DiskFileSystem().OpenTextFile(folder.Name(u"f"));
        LoadBudget budget;
        std::string found;
        try
        {
            const auto value = FirstConfigValue(u"kuid", *stream, budget);
            found = value ? ToUtf8(*value) : "no such key";
        }
        catch (const BoundsError& error)
        {
            found = "BoundsError " + std::to_string(error.Position());
        }
        EXPECT_EQ(found, outcome);
    }
}

TEST(LodNumber, StopsAtTheEndOfTheNumber)
{
    const std::pair<std::u16string_view, double> cases[] = {
        {u"1", 1},   {u"1 {", 1},  {u"1.0", 1},   {u"01", 1},     {u" + 1 . 0\t0x", 1},
        {u"2", 2},   {u"10", 10},  {u"1 0", 10},  {u"0.5", 0.5},  {u"", 0},
        {u"one", 0}, {u"-1", -1},  {u"10e-1", 1}, {u"1e", 1},     {u"1e+", 1},
        {u"1ex", 1}, {u"1.e1", 1}, {u"+-1", 0},   {u"0.1e1", 1},  {u"1,5", 1},
        {u"inf", 0}, {u".1e1", 0}, {u"0x1", 0},   {u"\u00B9", 0}, {u"1e0\u00B9", 1},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LodNumber(text), number) << std::string(text.begin(), text.end());
}

} // namespace
} // namespace ZLMIM::Testing
