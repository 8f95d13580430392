#pragma once

#include "zlmim/mesh/bone.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
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

    /// A known bone in a hash table with open addressing.
    struct Slot
    {
        StoredBone* bone = nullptr;
        std::uint64_t hash = 0;
    };

    [[nodiscard]] StoredBone* NextInWalk();
    [[nodiscard]] std::uint64_t Hash(std::u16string_view name) const noexcept;
    /// The slot of that name, or the empty slot where it belongs.
    [[nodiscard]] Slot& SlotOf(std::u16string_view name, std::uint64_t hash);
    void MakeRoom();

    StoredBone mRoot;
    /// For each level of the walk, the bones that are visited next.
    std::vector<std::span<StoredBone>> mPath;
    std::vector<Slot> mSlots;
    std::size_t mKnown = 0;
    /// Random seed of the hash, so that nobody can craft colliding names.
    std::uint64_t mKey;
};

} // namespace ZLMIM
