#include "zlmim/anim/anim.h"

#include "zlmim/reader/block.h"

namespace ZLMIM
{
namespace
{

constexpr std::int32_t kSignaturePos = 0;
constexpr std::int32_t kFileKindPos = 8;
constexpr std::int32_t kInfoSizePos = 16;

} // namespace

bool Anim::Load(std::u16string_view name)
{
    PathResolver paths;
    return Load(name, paths);
}

bool Anim::Load(std::u16string_view name, PathResolver& paths)
{
    FileName = std::u16string(name); // the name may be this very property
    return Finish(mCursor.LoadFile(FileName, paths, FileSize, EmptyFile::Accepted));
}

bool Anim::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    FileName = std::u16string(name);
    return Finish(mCursor.LoadBytes(bytes, FileSize, EmptyFile::Accepted));
}

bool Anim::Finish(bool isLoaded)
{
    if (!isLoaded)
    {
        mCursor.Release();
        return false;
    }
    if (!ReadHeader() || !ReadEvents())
        return false;
    ReadSkeleton();
    if (!RootBone)
        return false;
    if (!ReadFrames(InitBoneFrames()))
        return false;
    mCursor.Release();
    return true;
}

bool Anim::ReadHeader()
{
    mCursor.Pos = kSignaturePos;
    if (!mCursor.TakesTag("JIRF"))
    {
        ErrorMessage = u"Not a ZL file - no JIRF";
        return false;
    }
    mCursor.Pos = kFileKindPos;
    if (!mCursor.TakesTag("ANIM"))
    {
        ErrorMessage = u"Not a ZLM ANIM file - no ANIM";
        return false;
    }
    ReadInfo();
    return true;
}

void Anim::ReadInfo()
{
    mCursor.Pos = kInfoSizePos;
    const auto info = Block::EnterBehindTag(mCursor);
    Version = mCursor.GetLong();
    Name = mCursor.GetString();
    FrameCount = mCursor.GetLong();
    FPS = mCursor.GetLong();
    mCursor.GetSingle(MetScale);
    info.Leave(mCursor);
}

bool Anim::ReadEvents()
{
    const auto block = Block::EnterBeforeEnd(mCursor, "EVNT");
    if (!block)
        return false;
    block->Leave(mCursor);
    return true;
}

} // namespace ZLMIM
