#include "zlmim/mesh/bone_finder.h"

#include "zlmim/reader/bone_limits.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace ZLMIM
{

BoneFinder::BoneFinder(std::shared_ptr<Bone> root)
    : mRoot(std::move(root)), mPath({{&mRoot, 1}}), mSlots(64),
      mKey(reinterpret_cast<std::uintptr_t>(this) ^
           static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()))
{
}

std::shared_ptr<Bone> BoneFinder::FindBone(std::u16string_view name)
{
    StoredBone* found = SlotOf(name, Hash(name)).bone;
    while (!found)
    {
        StoredBone* const next = NextInWalk();
        if (!next)
            return nullptr;
        MakeRoom();
        const std::u16string& nextName = (*next)->Name;
        const std::uint64_t hash = Hash(nextName);
        Slot& slot = SlotOf(nextName, hash);
        if (slot.bone)
            continue; // keep the first of several bones with the same name
        slot = {next, hash};
        ++mKnown;
        if (nextName == name)
            found = next;
    }
    return (*found)->Group().Share(*found);
}

/// The next bone; null at the end of the tree.
BoneFinder::StoredBone* BoneFinder::NextInWalk()
{
    while (!mPath.empty())
    {
        auto& level = mPath.back();
        if (level.empty())
        {
            mPath.pop_back();
            continue;
        }
        StoredBone& bone = level.front();
        // Checked before the walk moves on, so that a walk stopped by the limit stops there again.
        if (bone)
            TestBoneLevel(static_cast<std::int32_t>(mPath.size()));
        level = level.subspan(1);
        if (!bone)
            continue;
        const auto children = bone->Children();
        mPath.push_back(children ? children->Entries() : std::span<StoredBone>());
        return &bone;
    }
    return nullptr;
}

std::uint64_t BoneFinder::Hash(std::u16string_view name) const noexcept
{
    // Multiplying by a secret odd number keeps crafted differences of two names from cancelling out.
    const std::uint64_t factor = (mKey * 0x9E3779B97F4A7C15) | 1;
    std::uint64_t hash = mKey ^ name.size();
    for (; name.size() >= 2; name.remove_prefix(2))
    {
        std::uint32_t pair = 0;
        std::memcpy(&pair, name.data(), sizeof(pair));
        hash = (hash ^ pair) * factor;
    }
    if (!name.empty())
        hash = (hash ^ name.front()) * factor;
    return hash ^ (hash >> 32U);
}

BoneFinder::Slot& BoneFinder::SlotOf(std::u16string_view name, std::uint64_t hash)
{
    const std::size_t mask = mSlots.size() - 1; // the size is a power of two
    for (std::size_t at = static_cast<std::size_t>(hash) & mask;; at = (at + 1) & mask)
    {
        Slot& slot = mSlots[at];
        if (!slot.bone || (slot.hash == hash && (*slot.bone)->Name == name))
            return slot;
    }
}

/// Keeps at least half of the slots empty.
void BoneFinder::MakeRoom()
{
    if (2 * mKnown < mSlots.size())
        return;
    const std::vector<Slot> old = std::exchange(mSlots, std::vector<Slot>(2 * mSlots.size()));
    for (const Slot& slot : old)
    {
        if (slot.bone)
            SlotOf((*slot.bone)->Name, slot.hash) = slot;
    }
}

} // namespace ZLMIM
