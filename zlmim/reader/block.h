#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/reader/file_cursor.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace ZLMIM
{

/// The frame of every block in both binary formats:
///
///     offset 0  tag, four characters, compared with the tag expected at that place
///     offset 4  i32 size, the number of bytes after the size field
///     offset 8  payload
///
/// The size alone determines where the next block starts. A reader reads the known part of the payload and
/// calls `Leave`, which skips the rest, or moves back if the reader read too far.
///
/// The members read through `cursor`, and throw what its reads throw.
/// \ingroup inside
class Block
{
public:
    /// Enters the block with that tag. Returns `std::nullopt` for another tag, and leaves `Pos` on it.
    [[nodiscard]] static std::optional<Block> Enter(FileCursor& cursor, std::string_view tag)
    {
        return cursor.MatchTag(tag) ? std::optional(EnterAfterTag(cursor)) : std::nullopt;
    }

    /// Like `Enter`, for files that may end before the block: also returns `std::nullopt`, without reading,
    /// at or past the end of the file.
    [[nodiscard]] static std::optional<Block> EnterOptional(FileCursor& cursor, std::string_view tag)
    {
        return cursor.Pos < cursor.FileSize() ? Enter(cursor, tag) : std::nullopt;
    }

    /// Enters a block whose tag the caller has already read.
    [[nodiscard]] static Block EnterAfterTag(FileCursor& cursor)
    {
        const std::int32_t sizePos = cursor.Pos;
        return {sizePos, cursor.GetLong()};
    }

    /// Moves `Pos` to the end of the block, as its size gives it.
    /// @throws OverflowError if that is outside the 32-bit range.
    void Leave(FileCursor& cursor) const
    {
        constexpr std::int32_t kSizeFieldSize = 4;
        cursor.Pos = CheckedAdd(CheckedAdd(mSizePos, mSize), kSizeFieldSize);
    }

private:
    Block(std::int32_t sizePos, std::int32_t size) : mSizePos(sizePos), mSize(size) {}

    std::int32_t mSizePos;
    std::int32_t mSize;
};

} // namespace ZLMIM
