#include "zlmim/config/config_line.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace ZLMIM
{
namespace
{

/// The UTF-8 signature EF BB BF, one character per byte.
constexpr std::u16string_view kSignature = u"\u00EF\u00BB\u00BF";
constexpr char16_t kQuote = u'"';

/// A quoted value is collected in parts of this many characters: one growing text would need up to three
/// times the memory.
constexpr std::size_t kPartSize = 524'288;

/// Whether a value that begins with a quotation mark has another one at its end.
bool IsClosed(std::size_t size, std::u16string_view end) { return size >= 2 && end.ends_with(kQuote); }

/// Reads the further lines of a quoted value. Returns false if the stream ended with them.
bool ReadQuoted(LineReader& lines, std::u16string& value)
{
    if (IsClosed(value.size(), value))
        return true;
    std::deque<std::u16string> parts;
    parts.push_back(std::move(value));
    std::size_t sizeBefore = 0; // characters of all parts but the last
    const auto size = [&] { return sizeBefore + parts.back().size(); };
    bool isAtEnd = false;
    while (!isAtEnd && !IsClosed(size(), parts.back()))
    {
        const std::u16string line = lines.ReadLine();
        if (parts.back().size() >= kPartSize)
        {
            sizeBefore = size();
            parts.emplace_back().reserve(kPartSize + line.size());
        }
        (parts.back() += u"\r\n") += line;
        lines.Shorten(parts.back());
        lines.Budget().RequireMemory(static_cast<std::int64_t>(size() * sizeof(char16_t)));
        isAtEnd = lines.AtEndOfStream();
    }
    value = std::move(parts.front());
    value.reserve(size());
    for (parts.pop_front(); !parts.empty(); parts.pop_front())
        value += parts.front();
    return !isAtEnd;
}

} // namespace

void ReadConfigLine(LineReader& lines, ConfigLine& line)
{
    lines.BeginLogicalLine();
    line.FirstLine = lines.FirstLine();
    std::u16string text = lines.ReadLine();
    line.LastLine = lines.LineCount();
    std::replace(text.begin(), text.end(), u'\t', u' ');
    std::u16string_view working = Trim(text);
    // Dropped from every line, not only from the file's first. Blanks after it stay.
    if (working.starts_with(kSignature))
        working.remove_prefix(kSignature.size());

    const std::size_t blank = std::min(working.find(u' '), working.size());
    line.Key = working.substr(0, blank);
    MakeLowerCase(line.Key);
    working = Trim(working.substr(blank));
    // Moves the line into the value: a copy of a very long line would need twice the memory.
    const auto start = static_cast<std::size_t>(working.data() - text.data());
    text.resize(start + working.size());
    text.erase(0, start);
    line.Value = std::move(text);
    if (!line.Value.starts_with(kQuote))
        return;

    const bool isClosed = ReadQuoted(lines, line.Value);
    line.LastLine = lines.LineCount();
    if (isClosed)
    {
        line.Value.pop_back();
        line.Value.erase(0, 1);
    }
}

std::optional<std::u16string> FirstConfigValue(std::u16string_view key, TextStream& stream,
                                               LoadBudget& budget)
{
    LineReader lines(stream, budget, kMaxSearchedLine);
    ConfigLine line;
    while (!lines.AtEndOfStream())
    {
        ReadConfigLine(lines, line);
        const bool isShortened = lines.TakeShortened();
        if (line.Key != key)
            continue;
        if (isShortened)
            ThrowLimit("line " + std::to_string(line.FirstLine) + " has more than ",
                       static_cast<std::int64_t>(kMaxSearchedLine), " characters (kMaxSearchedLine)");
        return std::move(line.Value);
    }
    return std::nullopt;
}

} // namespace ZLMIM
