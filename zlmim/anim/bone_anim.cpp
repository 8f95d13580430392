#include "zlmim/anim/bone_anim.h"

#include "zlmim/model/errors.h"

#include <utility>

namespace ZLMIM
{

BoneAnim::BoneAnim() : mChildren(std::make_shared<Collection<BoneAnim>>()) {}

BoneAnim::BoneAnim(Membership membership, Collection<BoneAnim>& children)
    : mMembership(std::move(membership)), mChildren(Membership::Uncounted(children))
{
}

std::shared_ptr<Collection<BoneAnim>> BoneAnim::Children() const { return mMembership.Share(mChildren); }

void BoneAnim::SetChildren(std::shared_ptr<Collection<BoneAnim>> children)
{
    mChildren = mMembership.Store(std::move(children));
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
