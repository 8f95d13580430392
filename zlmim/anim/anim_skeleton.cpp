#include "zlmim/anim/anim.h"
#include "zlmim/reader/block.h"

namespace ZLMIM
{

void Anim::ReadSkeleton()
{
    const auto block = Block::EnterBeforeEnd(mCursor, "SKEL");
    if (!block)
        return;

    const auto tree = std::make_shared<BoneTree<BoneAnim>>();
    // In place before its own block is looked at: a root without one is an empty bone.
    RootBone = tree->Make(1);
    ReadBone(*tree, RootBone, 1);

    block->Leave(mCursor);
}

void Anim::ReadBone(BoneTree<BoneAnim>& tree, const std::shared_ptr<BoneAnim>& bone, std::int32_t level)
{
    const auto block = Block::EnterBeforeEnd(mCursor, "BONE");
    if (!block)
        return;

    bone->Version = mCursor.GetLong();
    bone->Name = mCursor.GetString();
    const std::int32_t count = mCursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        // Linked before its block is looked at: a child without one stays as an empty bone.
        const auto child = tree.Make(level + 1);
        bone->Children()->Add(child);
        ReadBone(tree, child, level + 1);
    }

    block->Leave(mCursor);
}

} // namespace ZLMIM
