#include "config_check.h"

#include "config_braces.h"
#include "config_lines.h"
#include "spelling.h"

#include "zlmim/config/config_line.h"
#include "zlmim/config/line_reader.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/load_budget.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <set>

namespace ZLMIM::Validate
{
namespace
{

/// A quoted value of more lines has probably lost its closing mark.
constexpr std::int64_t kMostQuotedLines = 20;

constexpr std::int64_t kNoLine = std::numeric_limits<std::int64_t>::max();

std::size_t IndentOf(const std::u16string& line)
{
    const std::size_t end = std::min(line.find_first_not_of(u" \t"), line.size());
    std::size_t columns = 0;
    for (std::size_t i = 0; i < end; ++i)
        columns += line[i] == u'\t' ? 8 - columns % 8 : 1;
    return columns;
}

/// Whether a line inside a quoted value looks like a separate line.
bool LooksLikeKey(const std::u16string& line)
{
    const std::u16string lowerLine = LowerCase(Trim(line));
    const std::size_t blank = lowerLine.find_first_of(u" \t");
    const std::u16string key = lowerLine.substr(0, blank);
    if (key == u"mesh-table" || key == u"{" || key == u"}")
        return blank == std::u16string::npos;
    const bool isKnown = IsTopKey(key);
    if (!isKnown || blank == std::u16string::npos)
        return false;
    const std::u16string value(Trim(std::u16string_view(lowerLine).substr(blank)));
    return value.starts_with(u'"') || value.starts_with(u'<');
}

/// Whether a line is a key with a quoted value, such as `author "me"`. If a value ends with such a line, its
/// own mark is probably missing.
bool IsKeyWithQuotes(std::u16string_view line)
{
    line = Trim(line);
    const std::size_t blank = line.find_first_of(u" \t");
    const std::size_t open = line.find(u'"');
    return blank != std::u16string_view::npos && open != std::u16string_view::npos && open > blank &&
           open + 1 < line.size() && line.ends_with(u'"') && Trim(line.substr(blank, open - blank)).empty() &&
           line.find(u'"', open + 1) == line.size() - 1;
}

/// Whether the value of a key never has several lines.
bool IsOfOneLine(const std::u16string& key)
{
    static const std::vector<std::u16string> keys = {u"mesh", u"anim",       u"att-parent",    u"att",
                                                     u"kuid", u"pantograph", u"asset-filename"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// Whether a line ends with two quotation marks, of which one closes nothing.
bool HasLoneQuote(const ConfigLine& line, const ConfigText& text)
{
    if (line.Value.empty() || !Trim(text.Line(line.LastLine)).ends_with(u"\"\""))
        return false;
    std::ptrdiff_t quotes = 0;
    for (std::int64_t number = line.FirstLine; number <= line.LastLine; ++number)
        quotes += std::count(text.Line(number).begin(), text.Line(number).end(), u'"');
    return quotes % 2 != 0;
}

/// Splits the text into logical lines, and checks the quotation marks on the way.
std::vector<TextLine> ReadLines(ConfigText& text, Report& report, std::int64_t& firstMistake)
{
    std::vector<TextLine> lines;
    LoadBudget budget;
    LineReader reader(text, budget);
    while (!reader.AtEndOfStream())
    {
        TextLine line;
        bool isOpen = false;
        try
        {
            ReadConfigLine(reader, line);
            isOpen = line.Value.starts_with(u'"') && (line.Value.size() == 1 || !line.Value.ends_with(u'"'));
        }
        catch (const FileSystemError&)
        {
            isOpen = true;
            line.FirstLine = reader.FirstLine();
            line.LastLine = reader.LineCount();
        }
        line.Indent = IndentOf(text.Line(line.FirstLine));
        std::int64_t swallowed = 0;
        for (std::int64_t number = line.FirstLine + 1; number <= line.LastLine && swallowed == 0; ++number)
            swallowed = LooksLikeKey(text.Line(number)) ? number : 0;
        const auto add = [&](const std::string& message)
        {
            report.Add(Code::QuoteOpen, {line.FirstLine}, message);
            firstMistake = std::min(firstMistake, line.FirstLine);
        };
        if (isOpen)
            add("the quotation mark after " + Quoted(line.Key) + " is never closed: the rest of the file " +
                "belongs to its text");
        else if (line.LastLine > line.FirstLine)
        {
            const std::string mark = "the quotation mark after " + Quoted(line.Key) +
                                     " is only closed in line " + std::to_string(line.LastLine);
            const std::string belongs =
                swallowed > 0 ? ", so line " + std::to_string(swallowed) + " belongs to its text" : "";
            const bool endsWithKey = IsKeyWithQuotes(text.Line(line.LastLine));
            if (IsOfOneLine(line.Key) || (swallowed > 0 && endsWithKey))
                add(mark + belongs);
            // Any text may have many lines, and lines like those of a config.
            else if (swallowed > 0 || line.LastLine - line.FirstLine >= kMostQuotedLines)
                report.Add(Code::QuoteDoubtful, {line.FirstLine}, mark + belongs);
        }
        if (!isOpen && HasLoneQuote(line, text))
            report.Add(Code::QuoteDoubtful, {line.LastLine},
                       "one of the two quotation marks at the end is too many");
        if (!line.Key.empty() || !line.Value.empty())
            lines.push_back(std::move(line));
    }
    return lines;
}

/// Checks the keys of a file whose braces are right.
class KeyChecker
{
public:
    KeyChecker(const std::vector<TextLine>& lines, Report& report) : mLines(lines), mReport(report) {}

    void Check()
    {
        for (const TextLine& line : mLines)
        {
            if (line.IsLoneBrace())
                Open(mName ? *mName : line);
            else if (line.IsClosing())
                Close();
            else
                TakeKey(line);
            mName = line.IsLoneBrace() || line.IsClosing() || line.IsBlock() ? nullptr : &line;
        }
        if (!mHasKnownKey)
            mReport.Add(Code::ConfigUnknown, {}, "none of its keys is known: it isn't a config.txt");
        else
            CheckMissing();
    }

private:
    enum class Context
    {
        Top,
        Table,
        Entry,
        Other,
    };
    using KeyLines = std::map<std::u16string, std::int64_t>;
    struct Block
    {
        KeyChecker::Context In;
        std::u16string Name;
        std::int64_t Line;
        /// Lines of its keys, or of a table's entries.
        KeyLines Keys = {};
    };

    [[nodiscard]] Context Here() const { return mOpen.empty() ? Context::Top : mOpen.back().In; }

    void Open(const TextLine& name)
    {
        Context context = Context::Other;
        if (Here() == Context::Top && name.Key == u"mesh-table")
            context = Context::Table;
        else if (Here() == Context::Table)
            context = Context::Entry;
        mOpen.push_back({context, name.Key, name.FirstLine});
    }

    void Close()
    {
        if (mOpen.empty())
            return;
        const Block& block = mOpen.back();
        if (block.In == Context::Table && block.Keys.empty())
            mReport.Add(Code::MeshTableEmpty, {block.Line}, "the mesh table has no entry");
        mOpen.pop_back();
    }

    void TakeKey(const TextLine& line)
    {
        switch (Here())
        {
        case Context::Top:
            TakeTopKey(line);
            break;
        case Context::Table:
            TakeEntry(line);
            break;
        case Context::Entry:
            TakeEntryKey(line);
            break;
        case Context::Other:
            break;
        }
        if (line.IsBlock())
            Open(line);
    }

    void TakeTopKey(const TextLine& line)
    {
        if (!IsTopKey(line.Key))
            return CheckSpelling(line, TopKeys(), mTopLines, {line.FirstLine});
        mHasKnownKey = true;
        if (line.Value.empty() && (line.Key == u"username" || line.Key == u"kind"))
            mReport.Add(Code::ValueMissing, {line.FirstLine}, Quoted(line.Key) + " has no value");
        const auto [first, isNew] = mTopLines.try_emplace(line.Key, line.FirstLine);
        // Tables and bogeys add to those before.
        if (!isNew && line.Key != u"mesh-table" && !line.Key.starts_with(u"bogey"))
            AddTwice(line, {line.FirstLine}, first->second);
    }

    void TakeEntry(const TextLine& line)
    {
        const auto [first, isNew] = mOpen.back().Keys.try_emplace(line.Key, line.FirstLine);
        if (!isNew)
            mReport.Add(Code::EntryTwice, {line.FirstLine, line.Key},
                        "the entry in line " + std::to_string(first->second) +
                            " has the same name; att-parent finds only that one");
    }

    void TakeEntryKey(const TextLine& line)
    {
        Block& entry = mOpen.back();
        const Place place = {line.FirstLine, entry.Name};
        if (!IsEntryKey(line.Key))
            return CheckSpelling(line, EntryKeyNames(), entry.Keys, place);
        if (line.Key == u"anim" && line.Value.empty())
            mReport.Add(Code::ValueMissing, place, "anim has no value");
        const auto [first, isNew] = entry.Keys.try_emplace(line.Key, line.FirstLine);
        if (!isNew && line.Key != u"effects")
            AddTwice(line, place, first->second);
    }

    void AddTwice(const TextLine& line, const Place& place, std::int64_t first)
    {
        mReport.Add(Code::KeyTwice, place,
                    Quoted(line.Key) + " is also in line " + std::to_string(first) +
                        "; only the last one counts");
    }

    void CheckMissing()
    {
        for (const std::u16string key : {u"username", u"kind"})
        {
            if (mTopLines.contains(key) || mMeant.contains(key))
                continue;
            const bool isName = key == u"username" && mNameLine > 0;
            mReport.Add(Code::KeyMissing, {isName ? mNameLine : 0},
                        "the asset has no " + ToUtf8(key) + (isName ? "; is it this \"name\"?" : ""));
        }
    }

    void CheckSpelling(const TextLine& line, const std::vector<std::u16string>& known,
                       const KeyLines& present, const Place& place)
    {
        if (Here() == Context::Top && line.Key == u"name")
            mNameLine = line.FirstLine;
        const auto add = [&](const std::string& message)
        {
            mHasKnownKey = true;
            mReport.Add(Code::KeyMisspelt, place, message);
        };
        // What is sometimes found between a key and its value in place of a blank.
        const std::size_t end =
            std::min(line.Key.find_first_of(u"=:\"'<\u00A0\u201C\u201D\u201E"), line.Key.size());
        const std::u16string beginning = line.Key.substr(0, end);
        if (end < line.Key.size() && std::find(known.begin(), known.end(), beginning) != known.end())
        {
            mMeant.insert(beginning);
            return add("the key is " + Quoted(line.Key) + ": only blanks or tabs may be between " +
                       Quoted(beginning) + " and its value");
        }
        // Of "bogye-0" only the letters are compared.
        const std::u16string key = line.Key.substr(0, line.Key.find_last_not_of(u"-0123456789") + 1);
        std::vector<std::u16string> absent;
        std::copy_if(known.begin(), known.end(), std::back_inserter(absent),
                     [&](const std::u16string& name)
                     { return !present.contains(name) && (name.size() > 4 || EditDistance(key, name) < 2); });
        std::string hint = key.size() < 3 ? std::string() : DidYouMean(key, absent);
        const bool isOfEntry = Here() == Context::Entry;
        if (hint.empty() && isOfEntry && key.starts_with(u'a') && LowerCase(line.Value).ends_with(u".kin") &&
            !present.contains(u"anim"))
            hint = "; did you mean \"anim\"?";
        if (hint.empty())
            return;
        for (const std::u16string& name : absent)
            if (hint.find(Quoted(name)) != std::string::npos)
                mMeant.insert(name);
        add("unknown key " + Quoted(line.Key) + hint);
    }

    const std::vector<TextLine>& mLines;
    Report& mReport;
    std::vector<Block> mOpen;
    /// The line just before, whose block a brace would open.
    const TextLine* mName = nullptr;
    bool mHasKnownKey = false;
    KeyLines mTopLines;
    /// Known keys that are there, but misspelt.
    std::set<std::u16string> mMeant;
    /// The line of a key `name` at the top; 0 if there is no such key.
    std::int64_t mNameLine = 0;
};

} // namespace

std::int64_t CheckConfig(ConfigText& text, Report& report)
{
    std::int64_t firstMistake = kNoLine;
    std::vector<TextLine> lines = ReadLines(text, report, firstMistake);
    // An open quotation mark swallows braces and keys.
    if (firstMistake == kNoLine)
    {
        firstMistake = RepairBraces(lines, report);
        KeyChecker(lines, report).Check();
    }
    return firstMistake;
}

} // namespace ZLMIM::Validate
