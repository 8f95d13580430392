#include "zlmim/anim/anim.h"

#include "zlmim/reader/block.h"
#include "zlmim/reader/container.h"

namespace ZLMIM
{

bool Anim::Load(std::u16string_view name)
{
    PathResolver paths;
    LoadBudget budget;
    return Load(name, paths, budget);
}

bool Anim::Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget)
{
    FileName = std::u16string(name); // `name` may refer to this property
    return Container::Load(
        FileName, budget, [&](FileCursor& cursor) { return cursor.LoadFile(FileName, paths, FileSize); },
        [this](FileCursor& cursor) { return Parse(cursor); });
}

bool Anim::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    FileName = std::u16string(name);
    LoadBudget budget;
    return Container::Load(
        FileName, budget, [&](FileCursor& cursor) { return cursor.LoadBytes(bytes, FileSize); },
        [this](FileCursor& cursor) { return Parse(cursor); });
}

bool Anim::Parse(FileCursor& cursor)
{
    if (!ReadHeader(cursor) || !ReadEvents(cursor))
        return false;
    ReadSkeleton(cursor);
    return RootBone && ReadFrames(cursor, InitBoneFrames(cursor));
}

bool Anim::ReadHeader(FileCursor& cursor)
{
    if (!Container::FindInfo(cursor, "ANIM", ErrorMessage, u"Not a ZL file - no JIRF",
                             u"Not a ZLM ANIM file - no ANIM"))
        return false;
    ReadInfo(cursor);
    return true;
}

void Anim::ReadInfo(FileCursor& cursor)
{
    const auto info = Block::EnterAfterTag(cursor);
    Version = cursor.GetLong();
    Name = cursor.GetString();
    FrameCount = cursor.GetLong();
    FPS = cursor.GetLong();
    cursor.GetSingle(MetScale);
    info.Leave(cursor);
}

bool Anim::ReadEvents(FileCursor& cursor)
{
    const auto block = Block::EnterOptional(cursor, "EVNT");
    if (!block)
        return false;
    block->Leave(cursor);
    return true;
}

} // namespace ZLMIM
