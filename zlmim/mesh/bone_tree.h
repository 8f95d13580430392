#pragma once

#include "zlmim/mesh/bone.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/membership.h"

#include <deque>
#include <memory>

namespace ZLMIM
{

/// All bones that a load creates for one skeleton: the group (see `Membership`) of the bones and their lists
/// of children.
/// \ingroup inside
class BoneTree : public std::enable_shared_from_this<BoneTree>
{
public:
    /// A new bone, not yet in any list of children. The result keeps the tree alive.
    [[nodiscard]] std::shared_ptr<Bone> Make()
    {
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
};

} // namespace ZLMIM
