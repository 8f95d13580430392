#include "block_writer.h"
#include "outcome.h"
#include "temp_folder.h"
#include "zlmim/reader/file_cursor.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace ZLMIM::Testing
{
namespace
{

using namespace std::string_view_literals;

/// A budget for cursors that outlives them.
LoadBudget& TestBudget()
{
    static LoadBudget budget;
    return budget;
}

struct CursorOver : FileCursor
{
    explicit CursorOver(const Bytes& file, std::int32_t pos = 0) : FileCursor(TestBudget())
    {
        std::int32_t fileSize = -1;
        EXPECT_TRUE(LoadBytes(file.Span(), fileSize));
        EXPECT_EQ(fileSize, static_cast<std::int32_t>(file.Size()));
        Pos = pos;
    }
};

/// Calls a read of the cursor, and drops its value.
template <auto Read>
void Call(FileCursor& cursor)
{
    static_cast<void>((cursor.*Read)());
}

TEST(FileCursorFixedSizes, CanReadTheZeroAfterTheFileButNoFurther)
{
    const std::pair<std::int32_t, void (*)(FileCursor&)> reads[] = {
        {2, Call<&FileCursor::GetShort>},
        {4, Call<&FileCursor::GetLong>},
        {4,
         [](FileCursor& c)
         {
             float value = 0;
             c.GetSingle(value);
         }},
        {12, Call<&FileCursor::GetVector>},
        {12, Call<&FileCursor::GetColour>},
        {16, Call<&FileCursor::GetQuaternion>},
        {20, Call<&FileCursor::GetVertex>},
        {48, Call<&FileCursor::GetMatrix>},
        {24, [](FileCursor& c) { static_cast<void>(c.GetArray<Vector>(2)); }},
    };
    for (const auto& [size, read] : reads)
    {
        SCOPED_TRACE(size);
        CursorOver cursor(Bytes().Zeros(50));
        for (const std::int32_t pos : {0, 51 - size})
        {
            cursor.Pos = pos;
            EXPECT_NO_THROW(read(cursor)) << pos;
            EXPECT_EQ(cursor.Pos, pos + size);
        }
        for (const std::int32_t pos : {52 - size, 51, kHighest, -1, kLowest})
        {
            cursor.Pos = pos;
            EXPECT_EQ(ErrorPosition([&cursor, read = read] { read(cursor); }), pos == 52 - size ? 51 : pos);
            EXPECT_EQ(cursor.Pos, pos);
        }
        FileCursor empty(TestBudget());
        EXPECT_EQ(ErrorPosition([&empty, read = read] { read(empty); }), 0) << "no data";
    }
    CursorOver cursor(Bytes().Text("zABC"), 1);
    EXPECT_EQ(cursor.GetLong(), 0x00434241);
    cursor.Pos = 3;
    std::string message;
    try
    {
        static_cast<void>(cursor.GetLong());
    }
    catch (const BoundsError& error)
    {
        message = error.what();
    }
    EXPECT_EQ(message, "4 bytes at 3, data ends at 4");
}

TEST(FileCursorText, AdvancesByTheStoredLength)
{
    const auto tag = [](std::int32_t n) { return [n](FileCursor& c) { return c.GetTag(n); }; };
    const auto string = [](FileCursor& c) { return c.GetString(); };
    const struct
    {
        const char* name;
        std::function<std::u16string(FileCursor&)> read;
        Bytes file;
        std::int32_t pos;
        std::u16string_view text;
        std::string_view outcome;
        std::int32_t nextPos;
    } cases[] = {
        {"tag, zeroes inside", tag(4), Bytes().Text("A\0B\0C"sv), 0, u"A\0B\0"sv, "done", 4},
        {"tag, with the 0 after the file", tag(4), Bytes().Text("ABC"), 0, u"ABC\0"sv, "done", 4},
        {"tag, one byte too short", tag(4), Bytes().Text("AB"), 0, u"", kBounds, 0},
        {"tag, before the data", tag(4), Bytes().Text("ABCD"), -1, u"", kBounds, -1},
        {"tag, bytes above 127", tag(3), Bytes().Text("\x80\xC4\x81"), 0, u"\u20AC\u00C4\x81", "done", 3},
        {"tag, none", tag(0), Bytes(), 99, u"", "done", 99},
        {"tag, negative", tag(-3), Bytes().Text("ABCD"), 4, u"", "done", 1},
        {"tag, sum too great", tag(kHighest - 3), Bytes().Zeros(9), 4, u"", kOverflow, 4},
        {"tag, greatest sum", tag(kHighest - 4), Bytes().Zeros(9), 4, u"", kBounds, 4},
        {"tag, last index too small", tag(kLowest), Bytes().Zeros(9), 0, u"", kOverflow, 0},
        {"whole", string, Bytes().String("abc").Text("d"), 0, u"abc", "done", 7},
        {"zero inside", string, Bytes().Long(8).Text("abc\0wxyz!"sv), 0, u"abc", "done", 12},
        {"zero first", string, Bytes().Long(3).Text("\0bc"sv), 0, u"", "done", 7},
        {"empty", string, Bytes().Long(0).Text("abc"), 0, u"", "done", 4},
        {"longer than the file", string, Bytes().Long(99).Text("ab"), 0, u"ab", "done", 103},
        {"greatest length", string, Bytes().Long(kHighest - 4).Text("ab"), 0, u"ab", "done", kHighest},
        {"length past the range", string, Bytes().Long(kHighest - 3).Text("ab"), 0, u"", kOverflow, 4},
        {"only the 0 after the file", string, Bytes().Long(5), 0, u"", "done", 9},
        {"nothing left", string, Bytes().Text("\x05\0\0"sv), 0, u"", kBounds, 4},
        {"negative", string, Bytes().Text("ab").Long(-5).Text("c"), 2, u"", "done", 1},
        {"far negative", string, Bytes().Long(kLowest), 0, u"", "done", kLowest + 4},
        {"no whole length", string, Bytes().Text("\x05\0"sv), 0, u"", kBounds, 0},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        CursorOver cursor(c.file, c.pos);
        std::u16string text;
        EXPECT_EQ(OutcomeOf([&] { return text = c.read(cursor); }), c.outcome);
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(cursor.Pos, c.nextPos);
    }
}

TEST(FileCursorGetArray, ReadsAllElementsOrNothing)
{
    CursorOver cursor(Bytes().Text("zabcdefg"), 1);
    const auto array = cursor.GetArray<std::int16_t>(3);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(array.bytes), array.count * 2), "abcdef");
    EXPECT_EQ(cursor.Pos, 7);
    EXPECT_TRUE(cursor.CanRead(1, 2));
    EXPECT_FALSE(cursor.CanRead(2, 2));
    EXPECT_FALSE(cursor.CanRead(kHighest, 48));
    EXPECT_EQ(OutcomeOf([&] { return cursor.GetArray<Matrix>(kHighest).count; }), kBounds);
    cursor.Pos = 99;
    EXPECT_EQ(cursor.GetArray<Matrix>(0).count + cursor.GetArray<Matrix>(kLowest).count, 0U);
    EXPECT_EQ(cursor.Pos, 99);
}

TEST(FileCursor, ReadsAtMostTwiceTheFilePlus65536Bytes)
{
    // 12 bytes, so 65,560 may be read.
    const auto file = Bytes().Long(8).Text("ab\0defgh"sv);
    const std::pair<void (*)(FileCursor&), int> cases[] = {
        {Call<&FileCursor::GetLong>, 16390},
        {Call<&FileCursor::GetString>, 10926}, // its length and two characters
        {[](FileCursor& c) { static_cast<void>(c.GetTag(5)); }, 13112},
        {[](FileCursor& c) { static_cast<void>(c.GetArray<std::int16_t>(6)); }, 5463},
    };
    for (const auto& [read, times] : cases)
    {
        SCOPED_TRACE(times);
        CursorOver cursor(file);
        for (int i = 0; i < times; ++i)
        {
            cursor.Pos = 0;
            read(cursor);
        }
        cursor.Pos = 0;
        const auto position = ErrorPosition([&cursor, read = read] { read(cursor); });
        EXPECT_EQ(position, cursor.Pos);
        EXPECT_FALSE(cursor.CanRead(1, 12));
    }
}

TEST(FileCursorLoadFile, LoadsOnlyRegularFilesOfAnAllowedLength)
{
    const TempFolder folder;
    folder.Write("three", "abc");
    folder.Write("empty");
    folder.Write("folder/");
    folder.Write("too long");
    std::filesystem::resize_file(folder.Path() / "too long", 2147483647);
    const struct
    {
        std::u16string_view name;
        bool isLoaded;
        std::int32_t fileSize; // 77 before the load
    } cases[] = {
        {u"three", true, 3},    {u"THREE", true, 3},      {u"empty", true, 0},     {u"missing", false, 77},
        {u"folder", false, 77}, {u"folder\\", false, 77}, {u"three\\", false, 77}, {u"too long", false, 77},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(std::string(c.name.begin(), c.name.end()));
        PathResolver names;
        FileCursor cursor(TestBudget());
        cursor.Pos = 5;
        std::int32_t fileSize = 77;
        EXPECT_EQ(cursor.LoadFile(folder.Name(c.name), names, fileSize), c.isLoaded);
        EXPECT_EQ(fileSize, c.fileSize);
        const std::string_view file = "abc\0"sv;
        EXPECT_EQ(std::string(cursor.Data().begin(), cursor.Data().end()),
                  !c.isLoaded ? "" : file.substr(3 - static_cast<std::size_t>(c.fileSize)));
        EXPECT_EQ(cursor.Pos, 5);
    }
}

} // namespace
} // namespace ZLMIM::Testing
