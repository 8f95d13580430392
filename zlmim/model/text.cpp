#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace ZLMIM
{
namespace
{

constexpr std::array<char16_t, 256> kWindows1252 = []
{
    std::array<char16_t, 256> table{};
    std::iota(table.begin(), table.end(), u'\0');
    // Bytes without a character keep their own number.
    constexpr std::array<char16_t, 32> kFrom80 = {
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::copy(kFrom80.begin(), kFrom80.end(), table.begin() + 0x80);
    return table;
}();

constexpr char16_t LowerCase(char16_t c)
{
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return static_cast<char16_t>(c + 0x20);
    if (c == 0x0160 || c == 0x0152 || c == 0x017D)
        return static_cast<char16_t>(c + 1);
    return c == 0x0178 ? 0xFF : c;
}

/// Takes one code point off the front of `utf8`; `std::nullopt` if the front isn't UTF-8.
std::optional<char32_t> TakeCodePoint(std::string_view& utf8)
{
    const auto lead = static_cast<unsigned char>(utf8.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 || utf8.size() < length)
        return std::nullopt;
    char32_t point = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
    {
        const auto trail = static_cast<unsigned char>(utf8[i]);
        if ((trail & 0xC0U) != 0x80)
            return std::nullopt;
        point = (point << 6U) | (trail & 0x3FU);
    }
    const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    if (overlong || (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF)
        return std::nullopt;
    utf8.remove_prefix(length);
    return point;
}

void AppendCodePoint(std::string& utf8, char32_t point)
{
    const std::size_t length = point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
    constexpr std::array<char32_t, 4> kLeads = {0, 0xC0, 0xE0, 0xF0};
    std::size_t shift = 6 * (length - 1);
    utf8.push_back(static_cast<char>(kLeads[length - 1] | (point >> shift)));
    while (shift > 0)
    {
        shift -= 6;
        utf8.push_back(static_cast<char>(0x80U | ((point >> shift) & 0x3FU)));
    }
}

constexpr bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

} // namespace

std::u16string LowerCase(std::u16string_view text)
{
    std::u16string lower(text);
    MakeLowerCase(lower);
    return lower;
}

void MakeLowerCase(std::u16string& text) noexcept
{
    for (char16_t& c : text)
        c = LowerCase(c);
}

std::u16string_view Trim(std::u16string_view text)
{
    text = text.substr(0, text.find_last_not_of(u' ') + 1); // npos + 1 is 0
    return text.substr(std::min(text.find_first_not_of(u' '), text.size()));
}

std::u16string FromWindows1252(std::string_view bytes)
{
    std::u16string text(bytes.size(), u'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text[i] = kWindows1252[static_cast<unsigned char>(bytes[i])];
    return text;
}

std::optional<std::u16string> FromUtf8(std::string_view utf8)
{
    const auto firstWide =
        std::find_if(utf8.begin(), utf8.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    std::u16string text(utf8.begin(), firstWide);
    utf8.remove_prefix(text.size());
    while (!utf8.empty())
    {
        const auto point = TakeCodePoint(utf8);
        if (!point)
            return std::nullopt;
        if (*point < 0x10000)
        {
            text.push_back(static_cast<char16_t>(*point));
            continue;
        }
        const char32_t offset = *point - 0x10000;
        text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10U)));
        text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FFU)));
    }
    return text;
}

std::string ToUtf8(std::u16string_view text)
{
    const auto firstWide = std::find_if(text.begin(), text.end(), [](char16_t c) { return c >= 0x80; });
    std::string utf8(text.begin(), firstWide);
    for (std::size_t i = utf8.size(); i < text.size(); ++i)
    {
        char32_t point = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
        {
            point = 0x10000 + ((point - 0xD800) << 10U) + (text[i + 1] - 0xDC00U);
            ++i;
        }
        else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i]))
        {
            point = 0xFFFD;
        }
        AppendCodePoint(utf8, point);
    }
    return utf8;
}

} // namespace ZLMIM
