#include "zlmim/mesh/bone_finder.h"
#include "zlmim/mesh/bone_tree.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/bone_limits.h"
#include "zlmim/reader/load_budget.h"

namespace ZLMIM
{

void Mesh::ReadSkeleton()
{
    const auto block = Block::EnterOptional(mCursor, "SKEL");
    if (!block)
        return;

    static_cast<void>(mCursor.GetLong()); // not used
    const auto tree = std::make_shared<BoneTree>();
    BoneLimits limits;
    // Set before its block is read: a root without a block is an empty bone.
    RootBone = MakeBone(*tree, limits, 1);
    ReadBone(*tree, limits, RootBone, 1);

    block->Leave(mCursor);
}

std::shared_ptr<Bone> Mesh::MakeBone(BoneTree& tree, BoneLimits& limits, std::int32_t level)
{
    limits.Count(level);
    mCursor.Budget().ChargeObjects<Bone, Collection<Bone>>();
    return tree.Make();
}

void Mesh::ReadBone(BoneTree& tree, BoneLimits& limits, const std::shared_ptr<Bone>& bone, std::int32_t level)
{
    const auto block = Block::EnterOptional(mCursor, "BONE");
    if (!block)
        return;

    bone->Version = mCursor.GetLong();
    bone->Name = mCursor.GetString();
    bone->Position = mCursor.GetVector();
    bone->Rotation = mCursor.GetQuaternion();
    BoneCount = CheckedAdd(BoneCount, 1);
    const std::int32_t count = mCursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        // Linked before its block is read: a child without a block stays an empty bone.
        const auto child = MakeBone(tree, limits, level + 1);
        bone->Children()->Add(child);
        child->SetParent(bone);
        ReadBone(tree, limits, child, level + 1);
    }

    block->Leave(mCursor);
}

void Mesh::BindBones()
{
    if (!RootBone)
        return;
    BoneFinder finder(RootBone);
    for (const auto& chunk : *Chunks)
    {
        Geometry& geometry = *chunk->Geometry;
        if (!geometry.Bone.empty())
            geometry.BoneObject = finder.FindBone(geometry.Bone);
    }
}

} // namespace ZLMIM
