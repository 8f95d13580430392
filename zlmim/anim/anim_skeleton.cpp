#include "zlmim/anim/anim.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/bone_limits.h"

namespace ZLMIM
{

void Anim::ReadSkeleton(FileCursor& cursor)
{
    const auto block = Block::EnterOptional(cursor, "SKEL");
    if (!block)
        return;

    BoneLimits limits;
    // Set before its block is read: a root without a block is an empty bone.
    RootBone = MakeBone(cursor, limits, 1);
    ReadBone(cursor, limits, *RootBone, 1);

    block->Leave(cursor);
}

std::shared_ptr<BoneAnim> Anim::MakeBone(FileCursor& cursor, BoneLimits& limits, std::int32_t level)
{
    limits.Count(level);
    cursor.Budget().ChargeObjects<BoneAnim, Collection<BoneAnim>>();
    return std::make_shared<BoneAnim>();
}

BoneAnim& Anim::AddChild(FileCursor& cursor, BoneLimits& limits, BoneAnim& parent, std::int32_t level)
{
    const auto child = MakeBone(cursor, limits, level);
    parent.Children()->Add(child);
    return *child;
}

void Anim::ReadBone(FileCursor& cursor, BoneLimits& limits, BoneAnim& bone, std::int32_t level)
{
    const auto block = Block::EnterOptional(cursor, "BONE");
    if (!block)
        return;

    bone.Version = cursor.GetLong();
    bone.Name = cursor.GetString();
    const std::int32_t count = cursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        // Linked before its block is read: a child without a block stays an empty bone.
        BoneAnim& child = AddChild(cursor, limits, bone, level + 1);
        ReadBone(cursor, limits, child, level + 1);
    }

    block->Leave(cursor);
}

} // namespace ZLMIM
