#include "zlmim/reader/block.h"

#include "zlmim/model/errors.h"

namespace ZLMIM
{

std::optional<Block> Block::Enter(FileCursor& cursor, std::string_view tag)
{
    if (!cursor.MatchTag(tag))
        return std::nullopt;
    return EnterAfterTag(cursor);
}

std::optional<Block> Block::EnterOptional(FileCursor& cursor, std::string_view tag)
{
    return cursor.Pos < cursor.FileSize() ? Enter(cursor, tag) : std::nullopt;
}

Block Block::EnterAfterTag(FileCursor& cursor)
{
    const std::int32_t sizePos = cursor.Pos;
    const std::int32_t size = cursor.GetLong();
    return {sizePos, size};
}

void Block::Leave(FileCursor& cursor) const
{
    cursor.Pos = CheckedAdd(CheckedAdd(mSizePos, mSize), kSizeFieldSize);
}

} // namespace ZLMIM
