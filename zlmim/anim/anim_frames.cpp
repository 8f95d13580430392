#include "zlmim/anim/anim.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/allowances.h"
#include "zlmim/reader/block.h"

#include <cstring>

namespace ZLMIM
{
namespace
{

/// Makes the frame tables of a tree, each bone's before its children's, and notes the bones in that order.
class FrameTableMaker
{
public:
    FrameTableMaker(std::int32_t highestSlot, std::int64_t allowance)
        : mHighestSlot(highestSlot), mAllowance(allowance)
    {
    }

    void Make(BoneAnim& bone, std::int32_t level)
    {
        mLimits.Count(level);
        const std::int64_t size =
            (std::int64_t{mHighestSlot} + 1) * static_cast<std::int64_t>(sizeof(Keyframe));
        if (size > mAllowance)
            throw BoundsError("frame tables of " + std::to_string(size) + " bytes a bone", mHighestSlot);
        bone.InitFrames(mHighestSlot);
        mAllowance -= size;
        bones.push_back(&bone);
        const auto children = bone.Children();
        if (!children)
            return;
        for (const auto& child : *children)
        {
            if (child)
                Make(*child, level + 1);
        }
    }

    std::vector<BoneAnim*> bones;

private:
    std::int32_t mHighestSlot;
    std::int64_t mAllowance;
    BoneLimits mLimits;
};

} // namespace

Anim::BoneOrder Anim::InitBoneFrames()
{
    FrameTableMaker maker(FrameCount, FrameTableAllowance(mCursor.FileSize()));
    maker.Make(*RootBone, 1);
    return std::move(maker.bones);
}

bool Anim::ReadFrame(const BoneOrder& bones)
{
    const auto block = Block::EnterBeforeEnd(mCursor, u"FRAM");
    if (!block)
        return false;

    static_cast<void>(mCursor.GetLong()); // a field without use
    const std::int32_t frame = mCursor.GetLong();
    ReadBoneFrame(frame, bones);

    block->Leave(mCursor);
    return true;
}

void Anim::ReadBoneFrame(std::int32_t frame, const BoneOrder& bones)
{
    const bool isWhole = frame >= 0 && frame <= FrameCount &&
                         mCursor.CanRead(static_cast<std::int64_t>(bones.size()), sizeof(Keyframe));
    if (isWhole)
    {
        const auto run = mCursor.GetRun<Keyframe>(static_cast<std::int32_t>(bones.size()));
        const unsigned char* bytes = run.bytes;
        for (BoneAnim* const bone : bones)
        {
            std::memcpy(&bone->mFrames[static_cast<std::size_t>(frame)], bytes, sizeof(Keyframe));
            bytes += sizeof(Keyframe);
        }
        return;
    }
    // A frame that will fail has its first records stored all the same.
    for (BoneAnim* const bone : bones)
    {
        Keyframe keyframe;
        keyframe.p = mCursor.GetVector();
        keyframe.q = mCursor.GetQuaternion();
        bone->SetFrame(frame, keyframe);
    }
}

} // namespace ZLMIM
