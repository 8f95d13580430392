#include "zlmim/anim/bone_anim.h"

#include "zlmim/model/errors.h"

namespace ZLMIM
{

BoneAnim::~BoneAnim()
{
    // The bones below this one that nobody else holds, as a list. Recursion would need more stack the deeper
    // the tree is.
    std::shared_ptr<BoneAnim> orphans;
    const auto collect = [&orphans](std::shared_ptr<Collection<BoneAnim>> list)
    {
        if (!list || list.use_count() != 1)
            return;
        for (const auto& child : list->Entries())
        {
            if (child && child.use_count() == 1)
                child->mNextOrphan = std::exchange(orphans, child);
        }
    };
    collect(std::move(mChildren));
    while (orphans)
    {
        const auto bone = std::exchange(orphans, std::move(orphans->mNextOrphan));
        collect(std::move(bone->mChildren));
    }
}

void BoneAnim::InitFrames(std::int32_t i)
{
    if (i < 0)
        throw BoundsError("a frame table with the highest slot " + std::to_string(i), i);
    mFrames = {};
    mFrames = RecordArray<Keyframe>::Zeroed(static_cast<std::size_t>(i) + 1);
}

Keyframe BoneAnim::GetFrame(std::int32_t i) const { return mFrames[Slot(i)]; }

void BoneAnim::SetFrame(std::int32_t i, const Keyframe& k) { mFrames[Slot(i)] = k; }

std::size_t BoneAnim::Slot(std::int32_t i) const
{
    if (i < 0 || static_cast<std::size_t>(i) >= mFrames.size())
        throw BoundsError(
            "no slot " + std::to_string(i) + " in a frame table of " + std::to_string(mFrames.size()), i);
    return static_cast<std::size_t>(i);
}

} // namespace ZLMIM
