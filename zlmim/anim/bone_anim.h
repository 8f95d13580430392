#pragma once

#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/record_array.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

/// Bone object used by animated meshes, with one key frame for each slot of its frame table. A bone holds its
/// children. It has no reference to its parent, so keeping a leaf keeps only that leaf.
///
/// If the file counts a bone but has no block for it, the bone has no name. It still has frames like any
/// other.
/// \ingroup animations
class BoneAnim
{
public:
    /// A single bone, with an empty list of children and no frame table.
    BoneAnim() = default;
    BoneAnim(const BoneAnim&) = delete;
    BoneAnim& operator=(const BoneAnim&) = delete;
    ~BoneAnim();

    /// Child bones in file order. Null only if a host writes null.
    [[nodiscard]] std::shared_ptr<Collection<BoneAnim>> Children() const { return mChildren; }
    /// Replaces the list.
    void SetChildren(std::shared_ptr<Collection<BoneAnim>> children) { mChildren = std::move(children); }

    /// As stored, letter case included; need not be unique.
    std::u16string Name;
    /// Version of the BONE block, as stored.
    std::int32_t Version = 0;

    /// Replaces the frame table by one with the slots 0 to `i`, all zero (also `q`, which then isn't a unit
    /// quaternion). A load calls it for all bones with `Anim::FrameCount`.
    /// @throws BoundsError if `i` is negative; the old table stays.
    /// @throws std::bad_alloc; there is no table then.
    void InitFrames(std::int32_t i);

    /// A copy of slot `i`, from 0.
    /// @throws BoundsError outside the table, or if there is no table.
    [[nodiscard]] Keyframe GetFrame(std::int32_t i) const;

    /// Copies `k` into slot `i`, from 0.
    /// @throws BoundsError outside the table, or if there is no table.
    void SetFrame(std::int32_t i, const Keyframe& k);

    /// All slots in memory order, slot 0 first. Valid until the next `InitFrames` or the end of the object.
    /// Empty if there is no table.
    [[nodiscard]] std::span<const Keyframe> Frames() const noexcept
    {
        return {mFrames.data(), mFrames.size()};
    }

    /// A reference to the memory of `Frames`, for a host whose view may outlive the table: it is freed with
    /// the last reference. What is written through one is seen in the bone, until the next `InitFrames`. Null
    /// if there is no table.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<Keyframe> ShareFrames() { return mFrames.Share(); }

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    friend class Anim;

    [[nodiscard]] std::size_t Slot(std::int32_t i) const;

    std::shared_ptr<Collection<BoneAnim>> mChildren = std::make_shared<Collection<BoneAnim>>();
    RecordArray<Keyframe> mFrames;
    /// Used only while a tree is destroyed.
    std::shared_ptr<BoneAnim> mNextOrphan;
};

} // namespace ZLMIM
