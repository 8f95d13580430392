#ifndef ZLMIM_READER_BONE_TREE_H
#define ZLMIM_READER_BONE_TREE_H

#include "zlmim/model/collection.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/membership.h"
#include "zlmim/reader/allowances.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace ZLMIM
{

/// Holds a walk over a skeleton to the allowed number and depth of bones.
/// \ingroup inside
class BoneLimits
{
public:
    /// Counts one more bone, at `level` (the root's is 1).
    /// @throws BoundsError where it would be one too many or too deep.
    void Count(std::int32_t level)
    {
        if (level > kMaxBoneDepth)
            throw BoundsError("bone at level " + std::to_string(level) + " of a skeleton", level);
        if (mCount == kMaxBones)
            throw BoundsError("more than " + std::to_string(kMaxBones) + " bones in a skeleton", mCount);
        ++mCount;
    }

private:
    std::int32_t mCount = 0;
};

/// All bones that a load makes for one skeleton: the whole (see `Membership`) that its bones and their lists
/// of children are parts of. `Bone` is the mesh's or the animation's class of that role.
/// \ingroup inside
template <class Bone>
class BoneTree : public std::enable_shared_from_this<BoneTree<Bone>>
{
public:
    /// A new bone without a place in the tree yet, at `level`. The result holds the tree.
    /// @throws BoundsError past the allowances.
    [[nodiscard]] std::shared_ptr<Bone> Make(std::int32_t level)
    {
        mLimits.Count(level);
        const std::shared_ptr<BoneTree> self = this->shared_from_this();
        return {self, &mNodes.emplace_back(Membership(self)).bone};
    }

private:
    struct Node
    {
        explicit Node(const Membership& membership) : children(membership), bone(membership, children) {}

        Collection<Bone> children;
        Bone bone;
    };

    BoneLimits mLimits;
    std::deque<Node> mNodes;
};

} // namespace ZLMIM

#endif
