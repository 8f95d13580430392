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
        FileName, mCursor, [&] { return mCursor.LoadFile(FileName, paths, budget, FileSize); },
        [this] { return Parse(); });
}

bool Anim::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    FileName = std::u16string(name);
    LoadBudget budget;
    return Container::Load(
        FileName, mCursor, [&] { return mCursor.LoadBytes(bytes, budget, FileSize); },
        [this] { return Parse(); });
}

bool Anim::Parse()
{
    if (!ReadHeader() || !ReadEvents())
        return false;
    ReadSkeleton();
    return RootBone && ReadFrames(InitBoneFrames());
}

bool Anim::ReadHeader()
{
    if (!Container::FindInfo(mCursor, "ANIM", ErrorMessage, u"Not a ZL file - no JIRF",
                             u"Not a ZLM ANIM file - no ANIM"))
        return false;
    ReadInfo();
    return true;
}

void Anim::ReadInfo()
{
    const auto info = Block::EnterAfterTag(mCursor);
    Version = mCursor.GetLong();
    Name = mCursor.GetString();
    FrameCount = mCursor.GetLong();
    FPS = mCursor.GetLong();
    mCursor.GetSingle(MetScale);
    info.Leave(mCursor);
}

bool Anim::ReadEvents()
{
    const auto block = Block::EnterOptional(mCursor, "EVNT");
    if (!block)
        return false;
    block->Leave(mCursor);
    return true;
}

} // namespace ZLMIM
