#include "zlmim/mesh/bone_finder.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"

namespace ZLMIM
{

void Mesh::ReadSkeleton()
{
    const auto block = Block::EnterBeforeEnd(mCursor, "SKEL");
    if (!block)
        return;

    static_cast<void>(mCursor.GetLong()); // a field without use
    const auto tree = std::make_shared<BoneTree<Bone>>();
    // In place before its own block is looked at: a root without one is an empty bone.
    RootBone = tree->Make(1);
    ReadBone(*tree, RootBone, 1);

    block->Leave(mCursor);
}

void Mesh::ReadBone(BoneTree<Bone>& tree, const std::shared_ptr<Bone>& bone, std::int32_t level)
{
    const auto block = Block::EnterBeforeEnd(mCursor, "BONE");
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
        // Linked before its block is looked at: a child without one stays as an empty bone.
        const auto child = tree.Make(level + 1);
        bone->Children()->Add(child);
        child->SetParent(bone);
        ReadBone(tree, child, level + 1);
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
