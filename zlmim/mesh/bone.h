#ifndef ZLMIM_MESH_BONE_H
#define ZLMIM_MESH_BONE_H

#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/membership.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ZLMIM
{

/// Bone object used by animated meshes. The bones of a loaded skeleton are parts of a whole: whoever holds
/// one of them, or one of their `Children` lists, holds them all (see `Membership` for this and for what a
/// host writes).
///
/// A bone that the file announces, but has no block for, stays as a new one is: without a name, all zero.
/// \ingroup meshes
class Bone
{
public:
    /// A bone by itself, with an empty list of children.
    Bone();
    /// A part of a whole, that holds its children in `children`, a part of the same whole.
    Bone(Membership membership, Collection<Bone>& children);
    Bone(const Bone&) = delete;
    Bone& operator=(const Bone&) = delete;
    ~Bone() = default;

    /// The whole that the bone is a part of.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// Child bones in file order; never none unless a host writes none.
    [[nodiscard]] std::shared_ptr<Collection<Bone>> Children() const;
    /// Puts another list in its place. The children's `Parent` is the host's to write.
    void SetChildren(std::shared_ptr<Collection<Bone>> children);

    /// As stored, letter case included; need not be unique.
    std::u16string Name;
    /// Version of the BONE block, as stored.
    std::int32_t Version = 0;

    /// The bone whose `Children` holds this one; none on the root.
    [[nodiscard]] std::shared_ptr<Bone> Parent() const;
    /// Writes the reference alone: the bone stays in what lists it is.
    void SetParent(std::shared_ptr<Bone> parent);

    /// Position, as stored.
    Vector Position;
    /// Rotation, as stored; need not be of unit length, and is all zero on a new bone.
    Quaternion Rotation;

    /// Rotation (rows 1 to 3) and position (row 4) of this bone alone: nothing is composed with its parent.
    /// With x, y, z, w from `Rotation`, which isn't normalised first, the rows of the rotation are
    ///
    ///     1 - 2(yy + zz)   2(xy - zw)       2(xz + yw)
    ///     2(xy + zw)       1 - 2(xx + zz)   2(yz - xw)
    ///     2(xz - yw)       2(yz + xw)       1 - 2(xx + yy)
    ///
    /// So points that are multiplied as rows, as `Matrix` places them, turn by the conjugate quaternion
    /// (-x, -y, -z, w). Elements are formed in double precision, from products of which xz, xw, yy, yz, yw
    /// and zz are rounded to 32 bits first.
    [[nodiscard]] Matrix ToMatrix() const;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    Membership mMembership;
    std::shared_ptr<Collection<Bone>> mChildren;
    std::shared_ptr<Bone> mParent;
};

} // namespace ZLMIM

#endif
