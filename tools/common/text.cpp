#include "tools/common/text.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace ZLMIM::Tools
{
namespace
{

/// Control characters, and those that change the direction of writing or have no width.
bool IsControl(char16_t c)
{
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD || c == 0x061C || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

std::u16string Escape(char16_t c)
{
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string escape = c < 0x100 ? u"\\x" : u"\\u";
    for (int shift = c < 0x100 ? 4 : 12; shift >= 0; shift -= 4)
        escape += kDigits[(c >> shift) & 0xF];
    return escape;
}

template <class... Form>
std::string Format(float value, Form... form)
{
    std::array<char, 64> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, form...);
    return {buffer.data(), result.ptr};
}

} // namespace

std::string Printable(std::u16string_view text)
{
    std::u16string printable;
    for (const char16_t c : text)
        printable += IsControl(c) ? Escape(c) : std::u16string(1, c);
    return ToUtf8(printable);
}

std::string Quoted(std::u16string_view name) { return '"' + Printable(name) + '"'; }

std::string Number(std::int64_t number)
{
    std::string digits = std::to_string(number);
    const std::size_t first = number < 0 ? 1 : 0;
    for (std::size_t i = digits.size(); i > first + 3; i -= 3)
        digits.insert(i - 3, 1, ',');
    return digits;
}

std::string Decimal(float value)
{
    const float size = std::abs(value);
    if (size == 0)
        return "0.000";
    if (std::isfinite(size) && size >= 0.001F && size < 1e6F)
        return Format(value, std::chars_format::fixed, 3);
    return std::isnan(value) ? "nan" : Format(value, std::chars_format::general, 5);
}

std::string Words(std::initializer_list<std::string_view> words)
{
    std::string text;
    for (const std::string_view word : words)
        text.append(text.empty() || word.empty() ? "" : " ").append(word);
    return text;
}

std::string Wrapped(std::string_view text, std::size_t width, std::size_t indent)
{
    std::string wrapped;
    std::size_t column = indent;
    std::size_t pos = 0;
    while (pos < text.size())
    {
        const std::size_t end = std::min(text.find_first_of(" \n", pos), text.size());
        const std::string_view word = text.substr(pos, end - pos);
        if (column > indent && column + 1 + Width(word) > width)
        {
            wrapped.append(1, '\n').append(indent, ' ');
            column = indent;
        }
        else if (column > indent)
        {
            wrapped += ' ';
            ++column;
        }
        wrapped += word;
        column += Width(word);
        if (end < text.size() && text[end] == '\n')
        {
            wrapped.append(1, '\n').append(indent, ' ');
            column = indent;
        }
        pos = end + 1;
    }
    return wrapped;
}

std::size_t Width(std::string_view text)
{
    const auto isCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isCharacter));
}

std::string Shortened(std::string_view text, std::size_t width)
{
    if (Width(text) <= width)
        return std::string(text);
    std::size_t columns = 0;
    std::size_t end = 0;
    while (end < text.size() && columns + 1 < width)
    {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80)
            ++end;
        ++columns;
    }
    return std::string(text.substr(0, end)) + "…";
}

std::string Bytes(std::uint64_t count)
{
    constexpr std::uint64_t kKilo = 1'000;
    if (count < 10 * kKilo)
        return Counted(static_cast<std::int64_t>(count), "byte", "bytes");
    const std::uint64_t kilos = (count + kKilo / 2) / kKilo;
    const bool isSmall = kilos < 10 * kKilo;
    return Number(static_cast<std::int64_t>(isSmall ? kilos : (kilos + kKilo / 2) / kKilo)) +
           (isSmall ? " kB" : " MB");
}

std::string Counted(std::int64_t count, std::string_view one, std::string_view many)
{
    return Words({Number(count), count == 1 ? one : many});
}

} // namespace ZLMIM::Tools
