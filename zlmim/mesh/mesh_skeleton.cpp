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

    /// The same, linked to its parent.
    [[nodiscard]] std::shared_ptr<Bone> MakeChild(const std::shared_ptr<Bone>& parent, std::int32_t level,
                                                  LoadBudget& budget)
    {
        auto child = Make(level, budget);
        parent->Children()->Add(child);
        child->SetParent(parent);
        return child;
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

void Mesh::ReadSkeleton(FileCursor& cursor)
{
    const auto block = Block::EnterOptional(cursor, "SKEL");
    if (!block)
        return;

    static_cast<void>(cursor.GetLong()); // not used
    const auto tree = std::make_shared<BoneTree>();
    // Set before its block is read: a root without a block is an empty bone.
    RootBone = tree->Make(1, cursor.Budget());
    ReadBone(cursor, *tree, RootBone, 1);

    block->Leave(cursor);
}

void Mesh::ReadBone(FileCursor& cursor, BoneTree& tree, const std::shared_ptr<Bone>& bone, std::int32_t level)
{
    const auto block = Block::EnterOptional(cursor, "BONE");
    if (!block)
        return;

    bone->Version = cursor.GetLong();
    bone->Name = cursor.GetString();
    bone->Position = cursor.GetVector();
    bone->Rotation = cursor.GetQuaternion();
    BoneCount = CheckedAdd(BoneCount, 1);
    const std::int32_t count = cursor.GetLong();
    for (std::int32_t i = 0; i < count; ++i)
    {
        // Linked before its block is read: a child without a block stays an empty bone.
        const auto child = tree.MakeChild(bone, level + 1, cursor.Budget());
        ReadBone(cursor, tree, child, level + 1);
    }

    block->Leave(cursor);
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
