#pragma once

#include "zlmim/mesh/bone.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZLMIM
{

/// Finds bones by name in a tree that doesn't change in the meantime. Finds the first bone of that name in a
/// depth-first walk, parents first. All searches share one walk, which goes no further than they need.
/// \ingroup inside
class BoneFinder
{
public:
    /// Searches `root` and all bones below it. Keeps `root` alive.
    explicit BoneFinder(std::shared_ptr<Bone> root);
    BoneFinder(const BoneFinder&) = delete;
    BoneFinder& operator=(const BoneFinder&) = delete;

    /// The bone whose name equals `name` exactly; null if there is no such bone.
    /// @throws BoundsError past `kMaxBoneDepth`. A tree that a host built may even contain itself.
    [[nodiscard]] std::shared_ptr<Bone> FindBone(std::u16string_view name);

private:
    /// A reference to a bone, as it is stored in a list of children, or in `mRoot`.
    using StoredBone = const std::shared_ptr<Bone>;

    /// A hash with a random seed, so that nobody can craft colliding names.
    struct SeededHash
    {
        [[nodiscard]] std::size_t operator()(std::u16string_view name) const;

        std::uint64_t seed;
    };

    [[nodiscard]] StoredBone* NextInWalk();

    StoredBone mRoot;
    /// For each level of the walk, the bones that are visited next.
    std::vector<std::span<StoredBone>> mPath;
    /// Memory of the known bones.
    std::pmr::monotonic_buffer_resource mMemory;
    /// Of the bones visited so far, the first one of each name.
    std::pmr::unordered_map<std::u16string_view, StoredBone*, SeededHash> mKnown;
};

} // namespace ZLMIM
