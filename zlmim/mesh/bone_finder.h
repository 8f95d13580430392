#ifndef ZLMIM_MESH_BONE_FINDER_H
#define ZLMIM_MESH_BONE_FINDER_H

#include "zlmim/mesh/bone.h"
#include "zlmim/reader/bone_tree.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace ZLMIM
{

/// Finds bones by name in a tree that doesn't change meanwhile. The bone found is the first of that name in a
/// depth-first walk, parents first; but the tree is walked only once for all searches, and no further than
/// they need.
class BoneFinder
{
public:
    explicit BoneFinder(std::shared_ptr<Bone> root);

    /// The bone whose name equals `name` exactly, or none.
    /// @throws BoundsError if none was met before a tree passed the allowed number or depth of bones, as only
    /// one that a host built can.
    [[nodiscard]] std::shared_ptr<Bone> FindBone(std::u16string_view name);

private:
    /// A list of children on the way down, and the number of the entry to visit next.
    struct Level
    {
        std::shared_ptr<Collection<Bone>> children;
        std::int32_t next = 1;
    };

    std::shared_ptr<Bone> NextInWalk();

    std::shared_ptr<Bone> mRoot;
    std::vector<Level> mPath;
    BoneLimits mLimits;
    std::map<std::u16string_view, std::shared_ptr<Bone>> mByName;
};

} // namespace ZLMIM

#endif
