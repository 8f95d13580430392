#pragma once

#include "zlmim/mesh/bone.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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

    /// The bone whose name equals `name` exactly; null if there is no such bone.
    /// @throws BoundsError past `kMaxBoneDepth`. A tree that a host built may even contain itself.
    [[nodiscard]] std::shared_ptr<Bone> FindBone(std::u16string_view name);

private:
    /// An entry of a list of children, by its number from 0; nowhere if the list is null.
    struct Place
    {
        const Collection<Bone>* list = nullptr;
        std::size_t index = 0;

        [[nodiscard]] const std::shared_ptr<Bone>& Stored() const { return list->Entries()[index]; }
    };

    /// A known name in a hash table with open addressing.
    struct Slot
    {
        Place place;
        std::uint64_t hash = 0;
    };

    [[nodiscard]] Place NextInWalk();
    [[nodiscard]] std::uint64_t Hash(std::u16string_view name) const noexcept;
    /// The slot of that name, or the empty slot where it belongs.
    [[nodiscard]] Slot& SlotOf(std::u16string_view name, std::uint64_t hash);
    void MakeRoom();

    /// A list for the root, which isn't in any list of its own tree, so that the walk treats it like other
    /// bones.
    Collection<Bone> mTop;
    /// For each level of the walk, the entry that is visited next.
    std::vector<Place> mPath;
    std::vector<Slot> mSlots;
    std::size_t mKnown = 0;
    /// Random seed of the hash, so that nobody can craft colliding names.
    std::uint64_t mKey;
};

} // namespace ZLMIM
