#include "zlmim/anim/anim.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/bone_limits.h"

namespace ZLMIM
{

void Anim::ReadSkeleton()
{
    const auto block = Block::EnterOptional(mCursor, "SKEL");
    if (!block)
        return;

    BoneLimits limits;
    // Set before its block is read: a root without a block is an empty bone.
    RootBone = MakeBone(limits, 1);
    ReadBone(limits, *RootBone, 1);

    block->Leave(mCursor);
}

std::shared_ptr<BoneAnim> Anim::MakeBone(BoneLimits& limits, std::int32_t level)
{
    limits.Count(level);
    mCursor.Budget().ChargeObjects<BoneAnim, Collection<BoneAnim>>();
    return std::make_shared<BoneAnim>();
}

void Anim::ReadBone(BoneLimits& limits, BoneAnim& bone, std::int32_t level)
{
    const auto block = Block::EnterOptional(mCursor, "BONE");
    if (!block)
        return;

    bone.Version = mCursor.GetLong();
    bone.Name = mCursor.GetString();
    const std::int32_t count = mCursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        // Linked before its block is read: a child without a block stays an empty bone.
        const auto child = MakeBone(limits, level + 1);
        bone.Children()->Add(child);
        ReadBone(limits, *child, level + 1);
    }

    block->Leave(mCursor);
}

} // namespace ZLMIM
