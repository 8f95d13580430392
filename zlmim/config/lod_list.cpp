#include "zlmim/config/lod_list.h"

#include "zlmim/model/text.h"

#include <charconv>
#include <cstddef>
#include <optional>

namespace ZLMIM
{
namespace
{

/// `text` in single bytes, without blanks and tabs. Characters that can't be part of a number become '?'.
std::string Condensed(std::u16string_view text)
{
    std::string condensed;
    for (const char16_t c : text)
    {
        if (c != u' ' && c != u'\t')
            condensed += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return condensed;
}

bool IsDigit(std::string_view text) { return !text.empty() && text.front() >= '0' && text.front() <= '9'; }

/// The text after `marker` on the next line that contains it, in lower case, without quotation marks and
/// `dropped` characters; `std::nullopt` at the end of the file.
std::optional<std::u16string> NextAfter(LineReader& lines, std::u16string_view marker, char16_t dropped)
{
    while (!lines.AtEndOfStream())
    {
        std::u16string line = lines.ReadLine();
        MakeLowerCase(line);
        const std::size_t start = line.find(marker);
        if (start == std::u16string::npos)
            continue;
        line.erase(0, start + marker.size());
        std::erase_if(line, [dropped](char16_t c) { return c == u'"' || c == dropped; });
        return line;
    }
    return std::nullopt;
}

} // namespace

double LodNumber(std::u16string_view text)
{
    const std::string condensed = Condensed(text);
    std::string_view number = condensed;
    const bool isNegative = number.starts_with('-');
    if (isNegative || number.starts_with('+'))
        number.remove_prefix(1);
    // A point without digits after it ends the number before the point.
    if (const std::size_t point = number.find('.'); point != std::string_view::npos)
    {
        if (!IsDigit(number.substr(point + 1)))
            number = number.substr(0, point);
    }
    double value = 0;
    // "inf" and "nan" aren't numbers here.
    if (IsDigit(number))
        std::from_chars(number.data(), number.data() + number.size(), value);
    return isNegative ? -value : value;
}

std::u16string Level1Mesh(LineReader& lines)
{
    std::optional<std::u16string> level;
    do
    {
        level = NextAfter(lines, u"mesh(", u')');
        if (!level)
            return {};
    } while (LodNumber(*level) != 1.0);
    const auto name = NextAfter(lines, u"name=", u';');
    return name ? std::u16string(Trim(*name)) : std::u16string();
}

} // namespace ZLMIM
