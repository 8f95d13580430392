#include "zlmim/config/lod_number.h"

#include <charconv>
#include <cstddef>
#include <string>

namespace ZLMIM
{
namespace
{

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// `text` in single bytes, without blanks and tabs; what no number has becomes '?'.
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

/// Where the digits that begin at `start` end.
std::size_t SkipDigits(std::string_view text, std::size_t start)
{
    while (start < text.size() && IsDigit(text[start]))
        ++start;
    return start;
}

/// Length of the number without a sign that `text` begins with.
std::size_t NumberLength(std::string_view text)
{
    std::size_t length = SkipDigits(text, 0);
    if (length > 0 && length < text.size() && text[length] == '.')
    {
        const std::size_t fraction = SkipDigits(text, length + 1);
        length = fraction > length + 1 ? fraction : length;
    }
    if (length > 0 && length < text.size() && text[length] == 'e')
    {
        const std::string_view sign = text.substr(length + 1, 1);
        const std::size_t digits = length + (sign == "+" || sign == "-" ? 2 : 1);
        const std::size_t exponent = SkipDigits(text, digits);
        length = exponent > digits ? exponent : length;
    }
    return length;
}

} // namespace

double LodNumber(std::u16string_view text)
{
    const std::string condensed = Condensed(text);
    std::string_view number = condensed;
    const bool isNegative = number.starts_with('-');
    if (isNegative || number.starts_with('+'))
        number.remove_prefix(1);
    number = number.substr(0, NumberLength(number));
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return isNegative ? -value : value;
}

} // namespace ZLMIM
