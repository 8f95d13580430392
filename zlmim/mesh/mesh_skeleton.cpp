#include "zlmim/mesh/bone_finder.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/bone_limits.h"

#include <deque>

namespace ZLMIM
{

/// All bones that a load creates for one skeleton: the group (see `Membership`) of the bones and their lists
/// of children.
class Mesh::BoneTree : public std::enable_shared_from_this<Mesh::BoneTree>
{
public:
    /// A new bone at that level, not yet in any list of children. The result keeps the tree alive.
    [[nodiscard]] std::shared_ptr<Bone> Make(std::int32_t level, LoadBudget& budget)
    {
        mLimits.Count(level);
        budget.ChargeObjects<Bone, Collection<Bone>>();
        auto self = shared_from_this();
        Bone& bone = mNodes.emplace_back(Membership(self)).bone;
        return {std::move(self), &bone};
    }

private:
    struct Node
    {
        explicit Node(const Membership& membership) : children(membership), bone(membership, children) {}

        Collection<Bone> children;
        Bone bone;
    };

    std::deque<Node> mNodes;
    BoneLimits mLimits;
};

void Mesh::ReadSkeleton()
{
    const auto block = Block::EnterOptional(mCursor, "SKEL");
    if (!block)
        return;

    static_cast<void>(mCursor.GetLong()); // not used
    const auto tree = std::make_shared<BoneTree>();
    // Set before its block is read: a root without a block is an empty bone.
    RootBone = tree->Make(1, mCursor.Budget());
    ReadBone(*tree, RootBone, 1);

    block->Leave(mCursor);
}

void Mesh::ReadBone(BoneTree& tree, const std::shared_ptr<Bone>& bone, std::int32_t level)
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
        const auto child = tree.Make(level + 1, mCursor.Budget());
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
