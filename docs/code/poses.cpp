#include "poses.h"

#include "transforms.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace ZLMIM::Guide
{
namespace
{

/// The first bone of that name, parents first; null if there is none.
std::shared_ptr<BoneAnim> FindBone(const std::shared_ptr<BoneAnim>& bone, const std::u16string& name)
{
    if (!bone || bone->Name == name)
        return bone;
    const auto children = bone->Children();
    for (const auto& child : *children)
        if (auto found = FindBone(child, name))
            return found;
    return nullptr;
}

/// The key frame of a bone in a slot; the bone's rest pose if the slot is empty or doesn't exist.
Keyframe FrameOf(const Bone& bone, const Anim& anim, std::int32_t slot)
{
    const auto animated = FindBone(anim.RootBone, bone.Name);
    if (animated && slot >= 0 && slot <= anim.FrameCount)
        if (const Keyframe frame = animated->GetFrame(slot); frame.q != Quaternion())
            return frame;
    return {bone.Position, bone.Rotation};
}

/// A pose between two key frames: `a` for a `part` of 0, `b` for 1.
Keyframe Interpolate(const Keyframe& a, const Keyframe& b, float part)
{
    const auto mix = [part](float x, float y) { return x + (y - x) * part; };
    const float dot = a.q.x * b.q.x + a.q.y * b.q.y + a.q.z * b.q.z + a.q.w * b.q.w;
    const float sign = dot < 0 ? -1.0F : 1.0F; // q and -q are one rotation: go the shorter way
    Quaternion q = {mix(a.q.x, sign * b.q.x), mix(a.q.y, sign * b.q.y), mix(a.q.z, sign * b.q.z),
                    mix(a.q.w, sign * b.q.w)};
    const float length = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w);
    if (length > 0)
        q = {q.x / length, q.y / length, q.z / length, q.w / length};
    return {{mix(a.p.x, b.p.x), mix(a.p.y, b.p.y), mix(a.p.z, b.p.z)}, q};
}

/// The pose of one bone, relative to its parent.
Matrix PoseOf(const Bone& bone, const Anim& anim, float slot)
{
    const float whole = std::floor(slot);
    const auto first = static_cast<std::int32_t>(whole);
    Keyframe frame = FrameOf(bone, anim, first);
    if (slot > whole)
        frame = Interpolate(frame, FrameOf(bone, anim, first + 1), slot - whole);
    Bone posed;
    posed.Position = frame.p;
    posed.Rotation = frame.q;
    return posed.ToMatrix();
}

} // namespace

Matrix BoneTransform(std::shared_ptr<const Bone> bone, const Anim& anim, float slot)
{
    Matrix transform = kIdentity;
    for (; bone; bone = bone->Parent())
        transform = Multiply(transform, PoseOf(*bone, anim, slot));
    return transform;
}

Matrix ChunkMotion(const std::shared_ptr<const Bone>& bone, const Anim& anim, float slot)
{
    const auto fromRest = Inverse(BoneTransform(bone, Anim(), 0)); // without an animation: the rest pose
    return fromRest ? Multiply(*fromRest, BoneTransform(bone, anim, slot)) : kIdentity;
}

} // namespace ZLMIM::Guide
