#include "config_braces.h"

#include "spelling.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

/// Each change is tried on the whole file, so long files with several mistakes would take long.
constexpr std::size_t kMostLines = 1'000;
constexpr int kMostMistakes = 4;

constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

enum class TokenKind : std::uint8_t
{
    Opening,
    Closing,
    Block,
    Table,
    TableBlock,
    EntryKey,
    TopKey,
    Effects,
    Other,
    OtherWithValue,
};

/// The relevant properties of a line.
struct Token
{
    TokenKind Kind;
    std::size_t Indent;
    bool IsEffectsBlock = false;
    /// For a key of an entry, its place among them.
    std::size_t EntryKey = 0;
};

Token TokenOf(const TextLine& line)
{
    using enum TokenKind;
    const auto kind = [&]
    {
        if (line.IsLoneBrace())
            return Opening;
        if (line.IsClosing())
            return Closing;
        if (line.Key == u"mesh-table")
            return line.IsBlock() ? TableBlock : Table;
        if (line.IsBlock())
            return Block;
        if (line.Key == u"effects")
            return Effects;
        if (line.Value.empty())
            return Other;
        if (IsEntryKey(line.Key))
            return EntryKey;
        return IsTopKey(line.Key) ? TopKey : OtherWithValue;
    };
    const auto key = std::find(EntryKeyNames().begin(), EntryKeyNames().end(), line.Key);
    return {kind(), line.Indent, line.IsBlock() && line.Key == u"effects",
            static_cast<std::size_t>(key - EntryKeyNames().begin())};
}

enum class ChangeKind : std::uint8_t
{
    None,
    RemoveOpening,
    RemoveClosing,
    /// After line `Index`.
    InsertOpening,
    /// Before line `Index`.
    InsertClosing,
};

/// A change of one brace.
struct Change
{
    ChangeKind Kind = ChangeKind::None;
    std::size_t Index = kNowhere;
};

/// Adds up penalties for oddities in the structure of a config.
class StructureScore
{
public:
    explicit StructureScore(const std::vector<Token>& tokens)
        : mTokens(tokens), mIsIndented(std::any_of(tokens.begin(), tokens.end(),
                                                   [](const Token& token) { return token.Indent > 0; }))
    {
    }

    [[nodiscard]] int Penalty(const Change& change)
    {
        using enum ChangeKind;
        mOpen.clear();
        mPenalty = 0;
        mName = kNowhere;
        mChangedBlock = kNowhere;
        for (std::size_t i = 0; i < mTokens.size(); ++i)
        {
            if (change.Kind == InsertClosing && change.Index == i)
                CloseInserted();
            if (change.Index == i && (change.Kind == RemoveOpening || change.Kind == RemoveClosing))
                continue;
            Take(i);
            if (change.Kind == InsertOpening && change.Index == i)
                Open(i, mTokens[i].Indent);
        }
        if (change.Kind == InsertClosing && change.Index == mTokens.size())
            CloseInserted();
        return mPenalty + 10 * static_cast<int>(mOpen.size());
    }

    /// The line of the block that the inserted brace closes.
    [[nodiscard]] std::size_t ChangedBlock() const { return mChangedBlock; }

private:
    enum class Context : std::uint8_t
    {
        Top,
        Table,
        Entry,
        Effects,
        Other,
    };
    struct Block
    {
        StructureScore::Context In;
        std::size_t Line;
        std::size_t Indent;
        std::size_t ContentIndent = kNowhere;
        bool HasEntryKey = false;
        std::array<bool, 8> Has = {};
    };

    [[nodiscard]] Context Here() const { return mOpen.empty() ? Context::Top : mOpen.back().In; }

    void Take(std::size_t index)
    {
        using enum TokenKind;
        const Token& token = mTokens[index];
        if (token.Kind == Opening)
        {
            mPenalty += mName == kNowhere ? 4 : 0;
            Open(mName == kNowhere ? index : mName, token.Indent);
            return;
        }
        EndName();
        if (token.Kind == Closing)
        {
            Close(token.Indent);
            return;
        }
        TakeKey(token);
        mName = index;
        if (token.Kind == TokenKind::Block || token.Kind == TableBlock)
            Open(index, token.Indent);
    }

    void TakeKey(const Token& token)
    {
        using enum TokenKind;
        const Context here = Here();
        const bool isTopKey = token.Kind == TopKey || token.Kind == Table || token.Kind == TableBlock;
        if (isTopKey && (here == Context::Table || here == Context::Entry))
            mPenalty += 4;
        // In a nested block of an entry, or in a block in place of the table.
        const bool isNearEntry = here == Context::Other && mOpen.size() != 2 && mOpen.size() <= 3;
        if (token.Kind == EntryKey && (here == Context::Top || here == Context::Table || isNearEntry))
            mPenalty += 3;
        if (token.Kind == Effects && here != Context::Entry)
            mPenalty += 3;
        if (mOpen.empty())
        {
            mPenalty += token.Indent > 0 ? 1 : 0;
            return;
        }
        StructureScore::Block& block = mOpen.back();
        if (token.Kind == EntryKey)
        {
            mPenalty += block.Has.at(token.EntryKey) ? 2 : 0;
            block.Has.at(token.EntryKey) = true;
            block.HasEntryKey = true;
        }
        if (block.ContentIndent == kNowhere)
        {
            block.ContentIndent = token.Indent;
            mPenalty += mIsIndented && token.Indent <= block.Indent ? 1 : 0;
        }
        else
        {
            mPenalty += token.Indent != block.ContentIndent ? 1 : 0;
            mPenalty += mIsIndented && token.Indent <= block.Indent ? 1 : 0;
        }
    }

    /// Called when the line before turns out not to be the name of a block.
    void EndName()
    {
        if (mName == kNowhere)
            return;
        const TokenKind kind = mTokens[mName].Kind;
        if (Here() == Context::Table || kind == TokenKind::Table || kind == TokenKind::Effects)
            mPenalty += 3;
        mName = kNowhere;
    }

    void Open(std::size_t line, std::size_t indent)
    {
        using enum TokenKind;
        const TokenKind kind = mTokens[line].Kind;
        const Context here = Here();
        Context context = Context::Other;
        if (here == Context::Top && (kind == Table || kind == TableBlock))
            context = Context::Table;
        else if (here == Context::Table)
            context = Context::Entry;
        else if (here == Context::Entry && IsEffects(line))
            context = Context::Effects;
        // A key with a value has no block.
        if (kind == EntryKey || kind == TopKey || kind == OtherWithValue)
            mPenalty += 3;
        mOpen.push_back({context, line, indent});
        mName = kNowhere;
    }

    [[nodiscard]] bool IsEffects(std::size_t line) const
    {
        return mTokens[line].Kind == TokenKind::Effects || mTokens[line].IsEffectsBlock;
    }

    void Close(std::size_t indent)
    {
        if (mOpen.empty())
        {
            mPenalty += 10;
            return;
        }
        mPenalty += mIsIndented && mOpen.back().Indent != indent ? 2 : 0;
        Leave();
    }

    void CloseInserted()
    {
        EndName();
        if (mOpen.empty())
        {
            mPenalty += 10;
            return;
        }
        mChangedBlock = mOpen.back().Line;
        Leave();
    }

    void Leave()
    {
        const StructureScore::Block& block = mOpen.back();
        if (block.In == Context::Entry && !block.HasEntryKey)
            mPenalty += 2;
        if (block.ContentIndent == kNowhere)
            mPenalty += block.In == Context::Table ? 4 : 1;
        mOpen.pop_back();
    }

    const std::vector<Token>& mTokens;
    bool mIsIndented;
    std::vector<Block> mOpen;
    int mPenalty = 0;
    /// The line just before, whose block a brace would open.
    std::size_t mName = kNowhere;
    std::size_t mChangedBlock = kNowhere;
};

int Surplus(const std::vector<TextLine>& lines)
{
    int surplus = 0;
    for (const TextLine& line : lines)
        surplus += line.IsLoneBrace() || line.IsBlock() ? 1 : line.IsClosing() ? -1 : 0;
    return surplus;
}

/// The change of one brace that makes the file look best, and the block that it closes.
std::pair<Change, std::size_t> BestChange(const std::vector<TextLine>& lines, bool hasTooManyOpen)
{
    std::vector<Token> tokens;
    std::transform(lines.begin(), lines.end(), std::back_inserter(tokens), TokenOf);
    StructureScore score(tokens);
    std::pair<Change, std::size_t> best;
    int least = std::numeric_limits<int>::max();
    const auto attempt = [&](ChangeKind kind, std::size_t index)
    {
        const Change change = {kind, index};
        // Opening braces are lost less often, since they are next to their block's name.
        const bool isOpening = kind == ChangeKind::RemoveOpening || kind == ChangeKind::InsertOpening;
        const int penalty = score.Penalty(change) + (isOpening ? 1 : 0);
        // Of several closing braces in a row, the last one is as good as any.
        if (penalty < least || (penalty == least && kind == ChangeKind::RemoveClosing))
        {
            least = penalty;
            best = {change, score.ChangedBlock()};
        }
    };
    for (std::size_t i = 0; i <= lines.size(); ++i)
    {
        if (hasTooManyOpen)
            attempt(ChangeKind::InsertClosing, i);
        if (i == lines.size())
            break;
        if (hasTooManyOpen && lines[i].IsLoneBrace())
            attempt(ChangeKind::RemoveOpening, i);
        if (!hasTooManyOpen && lines[i].IsClosing())
            attempt(ChangeKind::RemoveClosing, i);
        if (!hasTooManyOpen && !lines[i].IsClosing() && !lines[i].IsLoneBrace() && !lines[i].IsBlock())
            attempt(ChangeKind::InsertOpening, i);
    }
    return best;
}

} // namespace

std::int64_t RepairBraces(std::vector<TextLine>& lines, Report& report)
{
    std::int64_t first = std::numeric_limits<std::int64_t>::max();
    const auto add = [&](Code code, std::int64_t line, const std::string& message)
    {
        // A file that was cut off lacks several, about which one finding will do.
        if (first != line)
            report.Add(code, {line}, message);
        first = std::min(first, line);
    };
    int surplus = Surplus(lines);
    if (surplus != 0 && (std::abs(surplus) > kMostMistakes || lines.size() > kMostLines))
    {
        const std::string count = std::to_string(std::abs(surplus));
        if (surplus > 0)
            add(Code::BraceMissing, 1, "in the whole file, " + count + " closing } are missing");
        else
            add(Code::BraceExtra, 1, "in the whole file, " + count + " closing } are too many");
        return first;
    }
    for (; surplus != 0; surplus = Surplus(lines))
    {
        const auto [change, block] = BestChange(lines, surplus > 0);
        const auto place = lines.begin() + static_cast<std::ptrdiff_t>(change.Index);
        const TextLine brace = {{surplus > 0 ? u"}" : u"{", {}, 0, 0}, 0};
        switch (change.Kind)
        {
        case ChangeKind::RemoveOpening:
            add(Code::BraceExtra, place->FirstLine, "this { is one too many");
            lines.erase(place);
            break;
        case ChangeKind::RemoveClosing:
            add(Code::BraceExtra, place->FirstLine,
                "this } is one too many: it closes no block, or the wrong one");
            lines.erase(place);
            break;
        case ChangeKind::InsertOpening:
            add(Code::BraceMissing, place->FirstLine,
                place + 1 != lines.end() && (place + 1)->Key == u"{"
                    ? "the { after " + Quoted(place->Key) +
                          " opens no block, since it isn't alone on its line"
                    : "no { follows " + Quoted(place->Key));
            lines.insert(place + 1, brace);
            break;
        default:
        {
            const TextLine& opened = lines[block == kNowhere ? 0 : block];
            const std::string where =
                place == lines.end() ? "the file ends" : "line " + std::to_string(place->FirstLine);
            add(Code::BraceMissing, opened.FirstLine,
                "the block " + Quoted(opened.Key) + " that begins here has no closing } before " + where);
            lines.insert(place, brace);
        }
        }
    }
    return first;
}

} // namespace ZLMIM::Validate
