#include "config_check.h"

#include "words.h"

#include "zlmim/config/config_line.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>

namespace ZLMIM::Validate
{
namespace
{

const std::vector<std::u16string> kTopKeys = {
    u"kuid",         u"kind",       u"username",       u"author",     u"description",
    u"zelmar-build", u"mesh-table", u"asset-filename", u"pantograph", u"bogey"};
const std::vector<std::u16string> kEntryKeys = {u"mesh", u"anim", u"att-parent", u"att", u"effects"};

/// A quoted value of more lines has probably lost its closing mark.
constexpr std::int64_t kMostQuotedLines = 20;

constexpr std::int64_t kNoLine = std::numeric_limits<std::int64_t>::max();

bool IsOneOf(const std::u16string& key, const std::vector<std::u16string>& keys)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// A logical line.
struct Line
{
    std::int64_t First = 0;
    std::int64_t Last = 0;
    /// Columns of blanks before it.
    std::size_t Indent = 0;
    std::u16string Key;
    std::u16string Value;

    [[nodiscard]] bool IsOpening() const { return Key == u"{" && Value.empty(); }
    [[nodiscard]] bool IsClosing() const { return Key == u"}"; }
    /// A block whose opening brace is on its own line: `name {`.
    [[nodiscard]] bool IsBlock() const { return Value == u"{"; }
};

std::size_t IndentOf(const std::u16string& line)
{
    const std::size_t end = std::min(line.find_first_not_of(u" \t"), line.size());
    std::size_t columns = 0;
    for (std::size_t i = 0; i < end; ++i)
        columns += line[i] == u'\t' ? 8 - columns % 8 : 1;
    return columns;
}

/// Whether a line that a quoted value has swallowed looks like a line of its own.
bool LooksLikeKey(const std::u16string& line)
{
    const std::u16string lowerLine = LowerCase(Trim(line));
    const std::size_t blank = lowerLine.find_first_of(u" \t");
    const std::u16string key = lowerLine.substr(0, blank);
    if (key == u"mesh-table" || key == u"{" || key == u"}")
        return blank == std::u16string::npos;
    const bool isKnown = IsOneOf(key, kTopKeys) || key.starts_with(u"bogey-");
    if (!isKnown || blank == std::u16string::npos)
        return false;
    const std::u16string value(Trim(std::u16string_view(lowerLine).substr(blank)));
    return value.starts_with(u'"') || value.starts_with(u'<');
}

/// Splits the text into logical lines, and checks the quotation marks on the way.
std::vector<Line> ReadLines(ConfigText& text, Report& report, std::int64_t& firstMistake)
{
    std::vector<Line> lines;
    while (!text.AtEndOfStream())
    {
        Line line;
        line.First = text.NextNumber();
        line.Indent = IndentOf(text.Line(line.First));
        bool isOpen = false;
        try
        {
            ReadConfigLine(text, line.Key, line.Value);
            isOpen = line.Value.starts_with(u'"') && (line.Value.size() == 1 || !line.Value.ends_with(u'"'));
        }
        catch (const FileSystemError&)
        {
            isOpen = true;
            line.Value.clear();
        }
        line.Last = text.NextNumber() - 1;
        std::int64_t swallowed = 0;
        for (std::int64_t number = line.First + 1; number <= line.Last && swallowed == 0; ++number)
            swallowed = LooksLikeKey(text.Line(number)) ? number : 0;
        const auto add = [&](const std::string& message)
        {
            report.Add(Code::QuoteOpen, {line.First}, message);
            firstMistake = std::min(firstMistake, line.First);
        };
        if (isOpen)
            add("the quotation mark after " + Quoted(line.Key) + " is never closed: the rest of the file " +
                "belongs to its text");
        else if (swallowed > 0)
            add("the quotation mark after " + Quoted(line.Key) + " is only closed in line " +
                std::to_string(line.Last) + ", so line " + std::to_string(swallowed) +
                " belongs to its text");
        else if (line.Last - line.First >= kMostQuotedLines)
            add("the quotation mark after " + Quoted(line.Key) + " is only closed " +
                std::to_string(line.Last - line.First) + " lines below");
        if (!line.Key.empty() || !line.Value.empty())
            lines.push_back(std::move(line));
    }
    return lines;
}

class Checker
{
public:
    Checker(const std::vector<Line>& lines, Report& report) : mLines(lines), mReport(report)
    {
        for (const Line& line : lines)
            mSurplus += line.IsOpening() || line.IsBlock() ? 1 : line.IsClosing() ? -1 : 0;
    }

    std::int64_t Check()
    {
        for (std::size_t i = 0; i < mLines.size(); ++i)
            Take(mLines[i], i + 1 < mLines.size() ? &mLines[i + 1] : nullptr);
        if (mSurplus > 0 && !mOpen.empty())
        {
            CloseMissing(mOpen.back(), " before the file ends");
            for (const Block& block : mOpen)
                if (block.Context == Context::Entry)
                    Mistake(block.Line);
        }
        if (!mHasKnownKey && mFirstMistake == kNoLine)
            mReport.Add(Code::ConfigUnknown, {}, "none of its keys is known: it isn't a config.txt");
        return mFirstMistake;
    }

private:
    enum class Context
    {
        Top,
        Table,
        Entry,
        Other,
    };
    struct Block
    {
        Checker::Context Context = Checker::Context::Top;
        std::u16string Name;
        std::int64_t Line = 0;
        /// Of the line with the brace.
        std::size_t Indent = 0;
        /// Line of each key in an entry, of each entry in a table.
        std::map<std::u16string, std::int64_t> Keys = {};
    };

    [[nodiscard]] Context Here() const { return mOpen.empty() ? Context::Top : mOpen.back().Context; }

    void Take(const Line& line, const Line* next)
    {
        if (line.IsOpening())
            Open(mName ? *mName : line, line.Indent);
        else if (line.IsClosing())
            Close(line);
        else
            TakeKey(line, next);
        if (!line.IsOpening())
            mName = line.IsClosing() || line.IsBlock() ? nullptr : &line;
        else
            mName = nullptr;
    }

    void Open(const Line& name, std::size_t indent)
    {
        Context context = Context::Other;
        if (Here() == Context::Top && name.Key == u"mesh-table")
            context = Context::Table;
        else if (Here() == Context::Table)
            context = Context::Entry;
        mIsIndented = mIsIndented || (!mOpen.empty() && indent > mOpen.back().Indent);
        mOpen.push_back({context, name.Key, name.First, indent});
    }

    void Close(const Line& line)
    {
        // Indentation shows which block is meant, where there are more braces of one kind.
        if (mSurplus > 0)
        {
            const bool isOuter = !mOpen.empty() && mOpen.back().Indent > line.Indent &&
                                 std::any_of(mOpen.begin(), mOpen.end(),
                                             [&](const Block& block) { return block.Indent == line.Indent; });
            while (isOuter && mSurplus > 0 && mOpen.back().Indent > line.Indent)
                PopMissing(" before line " + std::to_string(line.First));
        }
        else if (mSurplus < 0 && !mOpen.empty() && mOpen.back().Indent < line.Indent && mIsIndented)
        {
            Extra(line.First);
            return;
        }
        if (mOpen.empty())
        {
            if (mSurplus < 0)
                Extra(line.First);
            return;
        }
        const Block& block = mOpen.back();
        if (block.Context == Context::Table && block.Keys.empty())
            mReport.Add(Code::MeshTableEmpty, {block.Line}, "the mesh table has no entry");
        mClosed = line.First;
        mLast = std::move(mOpen.back());
        mOpen.pop_back();
        if (mLast.Context == Context::Table)
            mTableClosed = line.First;
    }

    void TakeKey(const Line& line, const Line* next)
    {
        if (line.Key == u"mesh-table" || (Here() == Context::Top && IsOneOf(line.Key, kTopKeys)))
            mHasKnownKey = true;
        const bool isPlain = !line.IsBlock() && !line.Value.empty();
        const bool isTopKey = isPlain && (IsOneOf(line.Key, kTopKeys) || line.Key.starts_with(u"bogey-"));
        if (mSurplus > 0 && isTopKey && (Here() == Context::Table || Here() == Context::Entry))
        {
            while (mSurplus > 0 && !mOpen.empty())
                PopMissing(" before line " + std::to_string(line.First));
        }
        const bool isEntryKey = isPlain && line.Key != u"effects" && IsOneOf(line.Key, kEntryKeys);
        const bool isInEntryInEntry =
            mOpen.size() > 1 && Here() == Context::Other && mOpen[mOpen.size() - 2].Context == Context::Entry;
        if (mSurplus > 0 && isEntryKey && isInEntryInEntry && mOpen.back().Name != u"effects")
        {
            // The block is the next entry, and the one around it lacks its brace.
            Block entry = std::move(mOpen.back());
            mOpen.pop_back();
            PopMissing(" before line " + std::to_string(entry.Line));
            entry.Context = Context::Entry;
            mOpen.push_back(std::move(entry));
        }
        if (mSurplus < 0 && isEntryKey && Here() == Context::Table && mLast.Context == Context::Entry)
        {
            // The entry that was closed last goes on.
            Extra(mClosed);
            mOpen.push_back(std::move(mLast));
        }
        else if (mSurplus < 0 && isEntryKey && mTableClosed > 0 && mOpen.size() == 1 &&
                 Here() == Context::Other)
        {
            // An entry after the table's end.
            Extra(mTableClosed);
        }

        switch (Here())
        {
        case Context::Top:
            TakeTopKey(line, next);
            break;
        case Context::Table:
            TakeEntry(line, next);
            break;
        case Context::Entry:
            TakeEntryKey(line);
            break;
        case Context::Other:
            break;
        }
        if (line.IsBlock())
            Open(line, line.Indent);
    }

    void TakeTopKey(const Line& line, const Line* next)
    {
        if (line.Key == u"mesh-table" && !line.IsBlock() && !(next && next->IsOpening()))
        {
            OpenMissing(line);
            return;
        }
        if (!IsOneOf(line.Key, kTopKeys) && !line.Key.starts_with(u"bogey"))
        {
            CheckSpelling(line, kTopKeys, mTopLines, {line.First});
            return;
        }
        const auto [first, isNew] = mTopLines.try_emplace(line.Key, line.First);
        if (!isNew && line.Key != u"mesh-table" && !line.Key.starts_with(u"bogey"))
            mReport.Add(Code::KeyTwice, {line.First},
                        Quoted(line.Key) + " is also in line " + std::to_string(first->second) +
                            "; only the last one counts");
    }

    void TakeEntry(const Line& line, const Line* next)
    {
        const auto [first, isNew] = mOpen.back().Keys.try_emplace(line.Key, line.First);
        if (!isNew)
            mReport.Add(Code::EntryTwice, {line.First, line.Key},
                        "the entry in line " + std::to_string(first->second) +
                            " has the same name; att-parent finds only that one");
        if (!line.IsBlock() && !(next && next->IsOpening()))
            OpenMissing(line);
    }

    void TakeEntryKey(const Line& line)
    {
        Block& entry = mOpen.back();
        if (!IsOneOf(line.Key, kEntryKeys))
        {
            CheckSpelling(line, kEntryKeys, entry.Keys, {line.First, entry.Name});
            return;
        }
        const auto [first, isNew] = entry.Keys.try_emplace(line.Key, line.First);
        if (!isNew && line.Key != u"effects")
            mReport.Add(Code::KeyTwice, {line.First, entry.Name},
                        Quoted(line.Key) + " is also in line " + std::to_string(first->second) +
                            "; only the last one counts");
    }

    void CheckSpelling(const Line& line, const std::vector<std::u16string>& known,
                       const std::map<std::u16string, std::int64_t>& present, Place place)
    {
        // Of "bogye-0" only the letters are compared.
        const std::u16string key = line.Key.substr(0, line.Key.find_last_not_of(u"-0123456789") + 1);
        std::vector<std::u16string> absent;
        std::copy_if(known.begin(), known.end(), std::back_inserter(absent),
                     [&](const std::u16string& name)
                     { return !present.contains(name) && (name.size() > 4 || LettersApart(key, name) < 2); });
        const std::string hint = key.size() < 3 ? std::string() : DidYouMean(key, absent);
        if (!hint.empty())
            mReport.Add(Code::KeyMisspelt, std::move(place), "unknown key " + Quoted(line.Key) + hint);
    }

    void Mistake(std::int64_t line) { mFirstMistake = std::min(mFirstMistake, line); }

    void Extra(std::int64_t line)
    {
        ++mSurplus;
        mReport.Add(Code::BraceExtra, {line}, "this } is one too many: it closes no block, or the wrong one");
        Mistake(line);
    }

    /// A table or an entry without an opening brace.
    void OpenMissing(const Line& line)
    {
        mReport.Add(Code::BraceMissing, {line.First}, "no { follows " + Quoted(line.Key));
        Mistake(line.First);
        ++mSurplus; // as if it were there
        Open(line, line.Indent);
    }

    void CloseMissing(const Block& block, const std::string& before)
    {
        mReport.Add(Code::BraceMissing, {block.Line},
                    "the block " + Quoted(block.Name) + " that begins here has no closing }" + before);
        Mistake(block.Line);
    }

    void PopMissing(const std::string& before)
    {
        CloseMissing(mOpen.back(), before);
        mOpen.pop_back();
        --mSurplus;
    }

    const std::vector<Line>& mLines;
    Report& mReport;
    /// Opening braces less closing ones, mistakes that have been reported not counted.
    int mSurplus = 0;
    std::vector<Block> mOpen;
    /// The key line just before, which a brace would open.
    const Line* mName = nullptr;
    /// The block that was closed last, and the line of its brace.
    Block mLast = {};
    std::int64_t mClosed = 0;
    std::int64_t mTableClosed = 0;
    /// Whether blocks in others are indented.
    bool mIsIndented = false;
    bool mHasKnownKey = false;
    std::map<std::u16string, std::int64_t> mTopLines;
    std::int64_t mFirstMistake = kNoLine;
};

} // namespace

std::int64_t CheckConfig(ConfigText& text, Report& report)
{
    std::int64_t firstMistake = kNoLine;
    const std::vector<Line> lines = ReadLines(text, report, firstMistake);
    // What a quotation mark has swallowed has braces too.
    if (firstMistake != kNoLine)
        return firstMistake;
    return Checker(lines, report).Check();
}

} // namespace ZLMIM::Validate
