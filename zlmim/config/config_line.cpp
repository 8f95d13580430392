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

/// Joins texts in only as much memory as the result needs, whatever its length.
class TextJoiner
{
public:
    explicit TextJoiner(std::u16string text) { mParts.push_back(std::move(text)); }

    [[nodiscard]] std::size_t Size() const noexcept { return mSize + mParts.back().size(); }
    [[nodiscard]] std::u16string& LastPart() noexcept { return mParts.back(); }

    void Add(std::u16string_view text)
    {
        if (text.empty())
            return;
        if (mParts.back().size() >= kPartSize)
        {
            mSize += mParts.back().size();
            mParts.emplace_back().reserve(kPartSize + text.size());
        }
        mParts.back() += text;
    }

    [[nodiscard]] std::u16string Take()
    {
        if (mParts.size() == 1)
            return std::move(mParts.front());
        std::u16string text;
        text.reserve(Size());
        for (; !mParts.empty(); mParts.pop_front())
            text += mParts.front();
        return text;
    }

private:
    static constexpr std::size_t kPartSize = 524'288;

    std::deque<std::u16string> mParts;
    /// Characters of all parts but the last.
    std::size_t mSize = 0;
};

/// Reads the further lines of a quoted value. Returns false if the stream ended with them.
bool ReadQuoted(LineReader& lines, std::u16string& value)
{
    const auto isClosed = [](const TextJoiner& text, char16_t last)
    { return text.Size() >= 2 && last == kQuote; };
    TextJoiner text(std::move(value));
    bool isAtEnd = false;
    while (!isAtEnd && !isClosed(text, text.LastPart().back()))
    {
        text.Add(u"\r\n");
        text.Add(lines.ReadLine());
        lines.Shorten(text.LastPart());
        lines.Budget().RequireMemory(static_cast<std::int64_t>(text.Size() * sizeof(char16_t)));
        isAtEnd = lines.AtEndOfStream();
    }
    value = text.Take();
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
    if (working.empty())
    {
        line.Value.clear();
        return;
    }
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
            throw BoundsError("line " + std::to_string(line.FirstLine) + " has more than " +
                                  std::to_string(kMaxSearchedLine) + " characters (kMaxSearchedLine)",
                              static_cast<std::int64_t>(kMaxSearchedLine));
        return std::move(line.Value);
    }
    return std::nullopt;
}

} // namespace ZLMIM
