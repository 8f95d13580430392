#ifndef ZLMIM_ANIM_BONE_ANIM_H
#define ZLMIM_ANIM_BONE_ANIM_H

#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/membership.h"
#include "zlmim/model/record_array.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ZLMIM
{

/// Bone object used by animated meshes, with one key frame for each slot of its frame table. The bones of a
/// loaded animation are parts of a whole: whoever holds one of them, or one of their `Children` lists, holds
/// them all (see `Membership` for this and for what a host writes).
///
/// A bone that the file announces, but has no block for, stays without a name; it has its frames like any
/// other. \ingroup animations
class BoneAnim
{
public:
    /// A bone by itself, with an empty list of children and no frame table.
    BoneAnim();
    /// A part of a whole, that holds its children in `children`, a part of the same whole.
    BoneAnim(Membership membership, Collection<BoneAnim>& children);
    BoneAnim(const BoneAnim&) = delete;
    BoneAnim& operator=(const BoneAnim&) = delete;
    ~BoneAnim() = default;

    /// The whole that the bone is a part of.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// Child bones in file order; never none unless a host writes none.
    [[nodiscard]] std::shared_ptr<Collection<BoneAnim>> Children() const;
    /// Puts another list in its place.
    void SetChildren(std::shared_ptr<Collection<BoneAnim>> children);

    /// As stored, letter case included; need not be unique.
    std::u16string Name;
    /// Version of the BONE block, as stored.
    std::int32_t Version = 0;

    /// Makes a new frame table with the slots 0 to `i`, all zero (also `q`, which is no unit quaternion
    /// then). The old table goes. A load does so for all bones, `i` being `Anim::FrameCount`.
    /// @throws BoundsError if `i` is negative; the old table stays.
    /// @throws std::bad_alloc; there is no table then.
    void InitFrames(std::int32_t i);

    /// A copy of slot `i`, from 0.
    /// @throws BoundsError outside the table, or without one.
    [[nodiscard]] Keyframe GetFrame(std::int32_t i) const;

    /// Copies `k` into slot `i`, from 0.
    /// @throws BoundsError outside the table, or without one.
    void SetFrame(std::int32_t i, const Keyframe& k);

    /// All slots as they lie in memory, slot 0 first, until the next `InitFrames` or the end of the object;
    /// empty without a table.
    [[nodiscard]] std::span<const Keyframe> Frames() const noexcept
    {
        return {mFrames.data(), mFrames.size()};
    }

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    friend class Anim;

    [[nodiscard]] std::size_t Slot(std::int32_t i) const;

    Membership mMembership;
    std::shared_ptr<Collection<BoneAnim>> mChildren;
    RecordArray<Keyframe> mFrames;
};

} // namespace ZLMIM

#endif
