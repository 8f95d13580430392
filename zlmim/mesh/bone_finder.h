#ifndef ZLMIM_MESH_BONE_FINDER_H
#define ZLMIM_MESH_BONE_FINDER_H

#include "zlmim/mesh/bone.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace ZLMIM
{

/// Finds bones by name in a tree that doesn't change meanwhile. The bone found is the first of that name in a
/// depth-first walk, parents first; but the tree is walked only once for all searches, and no further than
/// they need.
/// \ingroup inside
class BoneFinder
{
public:
    /// Searches in the tree below `root`, `root` included, and holds it.
    explicit BoneFinder(std::shared_ptr<Bone> root);

    /// The bone whose name equals `name` exactly, or none.
    /// @throws BoundsError past `kMaxBoneDepth`, in a tree that a host built: it may contain itself.
    [[nodiscard]] std::shared_ptr<Bone> FindBone(std::u16string_view name);

private:
    /// An entry of a list of children, by its number from 0; nowhere without a list.
    struct Place
    {
        const Collection<Bone>* list = nullptr;
        std::size_t index = 0;

        [[nodiscard]] const std::shared_ptr<Bone>& Stored() const { return list->Entries()[index]; }
    };

    /// A known name, in a table of open addresses.
    struct Slot
    {
        Place place;
        std::uint64_t hash = 0;
    };

    [[nodiscard]] Place NextInWalk();
    [[nodiscard]] std::uint64_t Hash(std::u16string_view name) const noexcept;
    /// The slot of that name, or the empty one where it belongs.
    [[nodiscard]] Slot& SlotOf(std::u16string_view name, std::uint64_t hash);
    void MakeRoom();

    /// The root stands in no list of its own tree: this is made for it, so that the walk begins as it goes
    /// on.
    Collection<Bone> mTop;
    /// On the way down, the entry of each list that is visited next.
    std::vector<Place> mPath;
    std::vector<Slot> mSlots;
    std::size_t mKnown = 0;
    /// Not to be foreseen by who makes up names that meet in one slot.
    std::uint64_t mKey;
};

} // namespace ZLMIM

#endif
