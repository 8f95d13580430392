#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/reader/load_budget.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace ZLMIM
{

/// Reads the lines of a text file, counts them, and charges for them.
/// \ingroup inside
class LineReader
{
public:
    /// For a reader that needs complete lines. A line must fit into the remaining `LoadLimits::Memory`.
    static constexpr std::size_t kWholeLines = static_cast<std::size_t>(-1);

    /// Reads from `stream`, and charges `budget`; both must outlive the reader. Keeps at most `mostKept`
    /// characters of a line, or of a value over several lines, see `Shorten`.
    LineReader(TextStream& stream, LoadBudget& budget, std::size_t mostKept = kWholeLines)
        : mStream(stream), mBudget(budget), mMostKept(mostKept)
    {
    }

    /// True when no further line can be read.
    [[nodiscard]] bool AtEndOfStream() { return mStream.AtEndOfStream(); }

    /// The next line without its end.
    /// @throws FileSystemError 62 at the end of the stream, 57 on a read error.
    /// @throws BoundsError if a limit is exceeded.
    [[nodiscard]] std::u16string ReadLine();

    /// Number of lines read so far, which is the number, from 1, of the last line read.
    [[nodiscard]] std::int64_t LineCount() const noexcept { return mLineCount; }

    /// Begins a logical line with the next line.
    void BeginLogicalLine() noexcept { mFirstLine = mLineCount + 1; }
    /// The line where the current logical line begins.
    [[nodiscard]] std::int64_t FirstLine() const noexcept { return mFirstLine; }

    /// The budget that is charged.
    [[nodiscard]] LoadBudget& Budget() const noexcept { return mBudget; }

    /// Shortens a text of more than `mostKept` characters. Drops blanks and tabs at its start, then its
    /// middle. Keeps the key of a line, and the quotation marks at both ends of a value.
    void Shorten(std::u16string& text);

    /// Whether a text was shortened since the last call.
    [[nodiscard]] bool TakeShortened() noexcept { return std::exchange(mHasShortened, false); }

private:
    TextStream& mStream;
    LoadBudget& mBudget;
    std::size_t mMostKept;
    std::int64_t mLineCount = 0;
    std::int64_t mFirstLine = 0;
    bool mHasShortened = false;
};

} // namespace ZLMIM
