#include "zlmim/mesh/bone_finder.h"

#include "zlmim/reader/bone_limits.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace ZLMIM
{

BoneFinder::BoneFinder(std::shared_ptr<Bone> root)
    : mSlots(64),
      mKey(reinterpret_cast<std::uintptr_t>(this) ^
           static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()))
{
    mTop.Add(std::move(root));
    mPath.push_back({&mTop, 0});
}

std::shared_ptr<Bone> BoneFinder::FindBone(std::u16string_view name)
{
    Place found = SlotOf(name, Hash(name)).place;
    while (!found.list)
    {
        const Place next = NextInWalk();
        if (!next.list)
            return nullptr;
        MakeRoom();
        const std::u16string& nextName = next.Stored()->Name;
        const std::uint64_t hash = Hash(nextName);
        Slot& slot = SlotOf(nextName, hash);
        if (slot.place.list)
            continue; // keep the first of several bones with the same name
        slot = {next, hash};
        ++mKnown;
        if (nextName == name)
            found = next;
    }
    return found.list->Group().Share(found.Stored());
}

/// The place of the next bone, or nowhere at the end of the tree.
BoneFinder::Place BoneFinder::NextInWalk()
{
    while (!mPath.empty())
    {
        Place& next = mPath.back();
        if (!next.list || next.index == next.list->Entries().size())
        {
            mPath.pop_back();
            continue;
        }
        const Place here = next;
        if (const auto& bone = here.Stored())
        {
            // Checked before the walk moves on, so that a walk stopped by the limit stops there again.
            TestBoneLevel(static_cast<std::int32_t>(mPath.size()));
            ++next.index;
            mPath.push_back({bone->Children().get(), 0});
            return here;
        }
        ++next.index;
    }
    return {};
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
        if (!slot.place.list || (slot.hash == hash && slot.place.Stored()->Name == name))
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
        if (slot.place.list)
            SlotOf(slot.place.Stored()->Name, slot.hash) = slot;
    }
}

} // namespace ZLMIM
