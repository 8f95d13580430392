#include "zlmim/mesh/bone_finder.h"

#include "zlmim/reader/bone_limits.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace ZLMIM
{
namespace
{

constexpr std::size_t kUsualBones = 64;

} // namespace

BoneFinder::BoneFinder(std::shared_ptr<Bone> root)
    : mRoot(std::move(root)), mPath({{&mRoot, 1}}),
      mKnown(
          kUsualBones,
          SeededHash{reinterpret_cast<std::uintptr_t>(this) ^
                     static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count())},
          &mMemory)
{
}

std::shared_ptr<Bone> BoneFinder::FindBone(std::u16string_view name)
{
    auto known = mKnown.find(name);
    while (known == mKnown.end())
    {
        StoredBone* const next = NextInWalk();
        if (!next)
            return nullptr;
        const auto [first, isNew] = mKnown.try_emplace((*next)->Name, next);
        if (isNew && first->first == name)
            known = first;
    }
    StoredBone& found = *known->second;
    return found->Group().Share(found);
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

std::size_t BoneFinder::SeededHash::operator()(std::u16string_view name) const
{
    // Multiplying by a secret odd number keeps crafted differences of two names from cancelling out.
    const std::uint64_t factor = (seed * 0x9E3779B97F4A7C15) | 1;
    std::uint64_t hash = seed ^ name.size();
    for (; name.size() >= 2; name.remove_prefix(2))
    {
        std::uint32_t pair = 0;
        std::memcpy(&pair, name.data(), sizeof(pair));
        hash = (hash ^ pair) * factor;
    }
    if (!name.empty())
        hash = (hash ^ name.front()) * factor;
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

} // namespace ZLMIM
