#include "zlmim/config/config_line.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ZLMIM
{
namespace
{

/// The UTF-8 signature EF BB BF, one character a byte.
constexpr std::u16string_view kSignature = u"\u00EF\u00BB\u00BF";
constexpr char16_t kQuote = u'"';

bool IsClosed(std::u16string_view value) { return value.size() >= 2 && value.back() == kQuote; }

} // namespace

std::u16string_view Trim(std::u16string_view text)
{
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(u' ') + 1 - first);
}

void ReadConfigLine(TextStream& stream, std::u16string& key, std::u16string& value)
{
    std::u16string line = stream.ReadLine();
    std::replace(line.begin(), line.end(), u'\t', u' ');
    std::u16string_view working = Trim(line);
    // On every line, not only the file's first; and nothing is trimmed behind it.
    if (working.starts_with(kSignature))
        working.remove_prefix(kSignature.size());

    const std::size_t blank = std::min(working.find(u' '), working.size());
    key = working.substr(0, blank);
    MakeLowerCase(key);
    working = Trim(working.substr(blank));
    if (working.empty())
    {
        value.clear();
        return;
    }
    // The line becomes the value: a copy would cost as much again where a line is very long.
    const auto start = static_cast<std::size_t>(working.data() - line.data());
    line.resize(start + working.size());
    line.erase(0, start);
    value = std::move(line);
    if (!value.starts_with(kQuote))
        return;

    while (!IsClosed(value))
    {
        value += u"\r\n";
        value += stream.ReadLine();
        if (stream.AtEndOfStream())
            return;
    }
    value.pop_back();
    value.erase(0, 1);
}

} // namespace ZLMIM
