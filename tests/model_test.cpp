#include "outcome.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

using namespace std::string_view_literals;

TEST(Collection, NumbersEntriesFromOneInTheOrderOfAdding)
{
    Collection<int> list;
    EXPECT_TRUE(list.begin() == list.end());
    const auto object = std::make_shared<int>(1);
    for (const auto& entry : {object, std::shared_ptr<int>(), object})
        list.Add(entry);

    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Item(1), object);
    EXPECT_EQ(std::vector(list.begin(), list.end()), (std::vector{object, std::shared_ptr<int>(), object}));
    for (const std::int32_t number : {kLowest, -1, 0, 4, kHighest})
        EXPECT_EQ(ErrorPosition([&] { return list.Item(number); }), number);
}

template <class Entry>
void ExpectRemoved(const Entry& first, const Entry& second, const Entry& third)
{
    Collection<Entry> list;
    for (const Entry& entry : {first, second, third})
        list.Add(entry);
    EXPECT_EQ(ErrorPosition([&] { list.Remove(4); }), 4);
    list.Remove(1);
    EXPECT_EQ(std::vector(list.begin(), list.end()), (std::vector{second, third}));
    list.Remove(2);
    EXPECT_EQ(std::vector(list.begin(), list.end()), std::vector{second});
    EXPECT_EQ(ErrorPosition([&] { list.Remove(2); }), 2);
}

TEST(Collection, RenumbersTheEntriesAfterARemovedOne)
{
    ExpectRemoved<Vector>({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    ExpectRemoved<std::u16string>(u"a", u"b", u"c");
}

TEST(Collection, CopiesRecordsAndTextEvenFromItsOwnEntries)
{
    Collection<Vector> records;
    Vector record{1, 2, 3};
    records.Add(record);
    record.x = 9;
    for (int i = 0; i < 1000; ++i)
        records.Add(records.Entries().back());
    EXPECT_EQ(records.Item(1), (Vector{1, 2, 3}));
    EXPECT_EQ(records.Item(1001), (Vector{1, 2, 3}));

    Collection<std::u16string> texts;
    std::u16string text = u"old";
    texts.Add(text);
    text = u"new";
    EXPECT_EQ(texts.Item(1), u"old");
}

TEST(LowerCase, ChangesOnlyTheCapitalsOfWindows1252)
{
    EXPECT_EQ(LowerCase(u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"), u"abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(LowerCase(u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŠŒŽŸ"), u"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþšœžÿ");
    std::u16string all;
    for (char32_t c = 0; c <= 0xFFFF; ++c)
        all.push_back(static_cast<char16_t>(c));
    const std::u16string lower = LowerCase(all);
    ASSERT_EQ(lower.size(), all.size());
    int changed = 0;
    for (std::size_t i = 0; i < all.size(); ++i)
        changed += lower[i] != all[i] ? 1 : 0;
    EXPECT_EQ(changed, 26 + 30 + 4);
}

TEST(FromWindows1252, MapsEachByteToOneCharacter)
{
    EXPECT_EQ(FromWindows1252("\0A~\x7F\xA0\xC4\xFF"sv), u"\0A~\x7F\xA0\u00C4\u00FF"sv);
    EXPECT_EQ(FromWindows1252("\x80\x81\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F"),
              u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F");
    EXPECT_EQ(
        FromWindows1252("\x90\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F"),
        u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178");
}

TEST(Utf8, ConvertsToAndFromUtf16)
{
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"", u""},
        {"a\0\x7F\xC2\x80\xDF\xBF"sv, u"a\0\x7F\x80\u07FF"sv},
        {"\xE0\xA0\x80\xE2\x82\xAC\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", u"\u0800\u20AC\xD7FF\xE000\xFFFF"},
        {"\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF", u"\xD800\xDC00\xD83D\xDE00\xDBFF\xDFFF"},
    };
    for (const auto& [utf8, utf16] : cases)
    {
        EXPECT_EQ(FromUtf8(utf8), utf16);
        EXPECT_EQ(ToUtf8(utf16), utf8);
    }
    EXPECT_EQ(ToUtf8(u"\xDE00\xD83D\xDE00\xD83Dz\xD83D"),
              "\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBDz\xEF\xBF\xBD");
}

TEST(Utf8, RejectsInvalidBytes)
{
    for (const char* bytes : {"\x80", "a\xBF", "\xC3", "\xC3z", "\xE2\x82", "\xE2z\x82", "\xE2\x82z",
                              "\xF0\x9F\x98", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
                              "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        EXPECT_EQ(FromUtf8(bytes), std::nullopt) << ::testing::PrintToString(bytes);
}

TEST(CheckedSums, ThrowOutsideThe32BitRange)
{
    EXPECT_EQ(CheckedAdd(kHighest - 1, 1), 2147483647);
    EXPECT_EQ(CheckedAdd(kLowest + 1, -1), -2147483647 - 1);
    EXPECT_EQ(CheckedSubtract(kLowest, kLowest), 0);
    EXPECT_EQ(CheckedSubtract(-1, kLowest), 2147483647);
    EXPECT_EQ(ErrorPosition([] { return CheckedAdd(kHighest, 1); }), 2147483648);
    EXPECT_EQ(ErrorPosition([] { return CheckedAdd(kLowest, -1); }), -2147483649);
    EXPECT_EQ(ErrorPosition([] { return CheckedSubtract(kLowest, 1); }), -2147483649);
    EXPECT_EQ(ErrorPosition([] { return CheckedSubtract(0, kLowest); }), 2147483648);
}

TEST(FileSystemError, DescribesItsPathAndNumber)
{
    using enum FileSystemError::Code;
    const std::pair<FileSystemError::Code, std::string_view> cases[] = {
        {NoSuchFile, "no such file (53)"},     {ReadError, "can't be read (57)"},
        {PastEnd, "read past the end (62)"},   {NoPermission, "no permission (70)"},
        {NoSuchFolder, "no such folder (76)"},
    };
    for (const auto& [number, description] : cases)
    {
        const FileSystemError error(number, u"a\\\u00E9");
        EXPECT_EQ(error.what(), "a\\\xC3\xA9: " + std::string(description));
        EXPECT_EQ(error.Number(), number);
        EXPECT_EQ(error.Path(), u"a\\\u00E9");
    }
}

} // namespace
} // namespace ZLMIM::Testing
