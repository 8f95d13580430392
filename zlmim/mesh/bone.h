#pragma once

#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/membership.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace ZLMIM
{

/// Bone object used by animated meshes. The bones of a loaded skeleton form a group: a reference to one of
/// them, or to one of their `Children` lists, keeps all of them alive. `Membership` documents this, and what
/// changes when a host writes references.
///
/// If the file counts a bone but has no block for it, the bone keeps its initial values: no name, all zero.
/// \ingroup meshes
class Bone
{
public:
    /// A bone without a group, with an empty list of children.
    Bone() = default;
    /// A bone of a group. `children`, which belongs to the same group, holds its children.
    Bone(Membership membership, Collection<Bone>& children)
        : mMembership(std::move(membership)), mChildren(Membership::Uncounted(children))
    {
    }
    Bone(const Bone&) = delete;
    Bone& operator=(const Bone&) = delete;

    /// The group that the bone belongs to.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// Child bones in file order. Null only if a host writes null.
    [[nodiscard]] std::shared_ptr<Collection<Bone>> Children() const { return mMembership.Share(mChildren); }
    /// Replaces the list. Doesn't change the `Parent` of any child.
    void SetChildren(std::shared_ptr<Collection<Bone>> children)
    {
        mChildren = mMembership.Store(std::move(children));
    }

    /// As stored, letter case included; need not be unique.
    std::u16string Name;
    /// Version of the BONE block, as stored.
    std::int32_t Version = 0;

    /// The bone whose `Children` holds this one; null on the root.
    [[nodiscard]] std::shared_ptr<Bone> Parent() const { return mMembership.Share(mParent); }
    /// Writes only the reference: lists of children don't change.
    void SetParent(std::shared_ptr<Bone> parent) { mParent = mMembership.Store(std::move(parent)); }

    /// Position, as stored.
    Vector Position;
    /// Rotation, as stored. Need not be of unit length, and is all zero on a new bone.
    Quaternion Rotation;

    /// Rotation (rows 1 to 3) and position (row 4) of this bone alone, without its parent's. With x, y, z, w
    /// from `Rotation`, which isn't normalised first, the rows of the rotation are
    ///
    ///     1 - 2(yy + zz)   2(xy - zw)       2(xz + yw)
    ///     2(xy + zw)       1 - 2(xx + zz)   2(yz - xw)
    ///     2(xz - yw)       2(yz + xw)       1 - 2(xx + yy)
    ///
    /// So points that are multiplied as rows, as `Matrix` does it, are rotated by the conjugate quaternion
    /// (-x, -y, -z, w). Elements are computed in double precision. Of the products, xz, xw, yy, yz, yw and zz
    /// are first rounded to 32 bits.
    [[nodiscard]] Matrix ToMatrix() const;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    Membership mMembership;
    std::shared_ptr<Collection<Bone>> mChildren = std::make_shared<Collection<Bone>>();
    std::shared_ptr<Bone> mParent;
};

} // namespace ZLMIM
