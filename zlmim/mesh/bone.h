#ifndef ZLMIM_MESH_BONE_H
#define ZLMIM_MESH_BONE_H

#include "zlmim/model/collection.h"
#include "zlmim/model/facade.h"
#include "zlmim/model/records.h"
#include "zlmim/model/whole.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ZLMIM
{

/// Bone object used by animated meshes. The bones of a loaded skeleton are parts of a whole: whoever holds
/// one of them, or one of their `Children` lists, holds them all (see `Membership` for this and for what a
/// host writes).
class Bone
{
public:
    Bone();
    /// A part of a whole, that holds its children in `children`, a part of the same whole.
    Bone(Membership membership, Collection<Bone>& children);
    Bone(const Bone&) = delete;
    Bone& operator=(const Bone&) = delete;
    ~Bone() = default;

    [[nodiscard]] const Membership& Whole() const noexcept { return mMembership; }

    /// Child bones in file order; never none unless a host writes none.
    [[nodiscard]] std::shared_ptr<Collection<Bone>> Children() const;
    void SetChildren(std::shared_ptr<Collection<Bone>> children);

    /// As stored, letter case included.
    std::u16string Name;
    /// Version of the BONE block.
    std::int32_t Version = 0;

    /// The bone whose `Children` holds this one; none on the root.
    [[nodiscard]] std::shared_ptr<Bone> Parent() const;
    void SetParent(std::shared_ptr<Bone> parent);

    /// Position, as stored.
    Vector Position;
    /// Rotation, as stored; need not be of unit length.
    Quaternion Rotation;

    /// Rotation (rows 1 to 3) and position (row 4) of this bone alone: nothing is composed with its parent.
    /// The usual matrix of a quaternion for points that are multiplied as rows; `Rotation` isn't normalised
    /// first. Elements are formed in double precision from products that are partly rounded to 32 bits, as
    /// the system does it.
    [[nodiscard]] Matrix ToMatrix() const;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;

private:
    Membership mMembership;
    std::shared_ptr<Collection<Bone>> mChildren;
    std::shared_ptr<Bone> mParent;
};

} // namespace ZLMIM

#endif
