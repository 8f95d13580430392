#pragma once

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <cstdint>
#include <glm/glm.hpp>
#include <string>
#include <unordered_map>

namespace ZLMIM::Tools
{

// Conventions that the formats don't define, for everything that draws or exports assets: metres; x to the
// right, y forward, z up; rotations as `Bone::ToMatrix` gives them.

/// What the poses of bones, in a mesh and in an animation, are relative to. The formats don't say.
enum class PoseBase
{
    Parent,
    Mesh,
};

/// Column i of the result is row i of `matrix`, so that it takes column vectors as `matrix` takes rows.
[[nodiscard]] glm::mat4 ToMat4(const Matrix& matrix);

/// The filled slots of an animation. A frame table has one slot more than there are frames: the last or the
/// first one is empty, depending on whether the file numbers frames from 0 or from 1.
struct Run
{
    std::int32_t First = 0;
    std::int32_t Last = -1;

    [[nodiscard]] bool IsEmpty() const { return Last < First; }
};

[[nodiscard]] Run RunOf(const Anim& anim);

/// The bones of an animation by their names; of several, the first in tree order, parents first. The bones
/// of a mesh are animated by those of the same name.
[[nodiscard]] std::unordered_map<std::u16string, const BoneAnim*> BonesByName(const Anim& anim);

/// How the bones of a mesh move in an animation.
class Poses
{
public:
    /// `anim` must outlive this object.
    Poses(const Anim& anim, PoseBase base) : mBones(BonesByName(anim)), mBase(base) {}

    /// Takes what hangs from a bone from its place in the mesh, as stored, to its place in a slot: the
    /// inverse of the bone's rest pose, then its pose. A slot such as 2.5 is interpolated. A bone that the
    /// animation doesn't have, or whose slot is empty, keeps its rest pose; one whose rest pose has no
    /// inverse doesn't move.
    [[nodiscard]] glm::mat4 Motion(const Bone& bone, double slot) const;

private:
    [[nodiscard]] glm::mat4 PoseOf(const Bone& bone, double slot) const;
    [[nodiscard]] Keyframe FrameOf(const Bone& bone, std::int32_t slot) const;

    std::unordered_map<std::u16string, const BoneAnim*> mBones;
    PoseBase mBase;
};

} // namespace ZLMIM::Tools
