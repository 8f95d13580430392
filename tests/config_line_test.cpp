#include "temp_folder.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/lod_number.h"
#include "zlmim/model/errors.h"

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

TEST(DiskTextStream, EndsLinesAtEachKindOfEnd)
{
    const std::string piece(4'095, 'x'); // up to the stream's last byte but one before it reads on
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

TEST(ReadConfigLine, TellsKeyAndValue)
{
    const struct
    {
        std::string_view file;
        std::u16string_view key;
        std::u16string_view value;
        std::u16string_view rest; // the line behind; "-" if reading this one raises
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
        std::u16string key = u"old";
        std::u16string value = u"old";
        if (c.rest == u"-")
        {
            EXPECT_THROW(ReadConfigLine(*stream, key, value), FileSystemError);
            continue;
        }
        ReadConfigLine(*stream, key, value);
        EXPECT_EQ(key, c.key);
        EXPECT_EQ(value, c.value);
        EXPECT_EQ(stream->AtEndOfStream() ? u"" : stream->ReadLine(), c.rest);
    }
}

TEST(LodNumber, ReadsAsFarAsANumberGoes)
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
