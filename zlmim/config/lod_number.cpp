#include "zlmim/config/lod_number.h"

#include <charconv>
#include <cstddef>
#include <string>

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

} // namespace ZLMIM
