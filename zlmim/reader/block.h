#ifndef ZLMIM_READER_BLOCK_H
#define ZLMIM_READER_BLOCK_H

#include "zlmim/reader/file_cursor.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace ZLMIM
{

/// The frame that every block of both binary formats has:
///
///     offset 0  tag, four characters, compared with the one that is expected at that place
///     offset 4  i32 size, the number of bytes after the size field
///     offset 8  payload
///
/// The size alone decides where the next block lies: a reader takes what it knows from the payload and calls
/// `Leave`, which skips what it left and pulls it back if it read too far.
///
/// The members read through `cursor`, and throw what its reads throw.
/// \ingroup inside
class Block
{
public:
    /// Enters the block with that tag. Returns `std::nullopt` for another tag, and leaves `Pos` on it.
    [[nodiscard]] static std::optional<Block> Enter(FileCursor& cursor, std::string_view tag);

    /// The same for a block that a file may end before: also returns `std::nullopt`, and reads nothing, at or
    /// past the end of the file.
    [[nodiscard]] static std::optional<Block> EnterOptional(FileCursor& cursor, std::string_view tag);

    /// Enters a block whose tag the caller has read.
    [[nodiscard]] static Block EnterAfterTag(FileCursor& cursor);

    /// Moves `Pos` to the end of the block, by its size.
    /// @throws OverflowError where that leaves the 32-bit range.
    void Leave(FileCursor& cursor) const;

private:
    Block(std::int32_t sizePos, std::int32_t size) : mSizePos(sizePos), mSize(size) {}

    std::int32_t mSizePos;
    std::int32_t mSize;
};

/// Size in bytes of the size field.
/// \ingroup inside
inline constexpr std::int32_t kSizeFieldSize = 4;
} // namespace ZLMIM

#endif
