#include "tools/common/poses.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/quaternion.hpp>
#include <memory>
#include <vector>

namespace ZLMIM::Tools
{
namespace
{

bool IsFilled(const Keyframe& frame) { return frame.q != Quaternion(); }

glm::mat4 PoseMatrix(const Keyframe& frame)
{
    Bone bone;
    bone.Position = frame.p;
    bone.Rotation = frame.q;
    return ToMat4(bone.ToMatrix());
}

Keyframe Between(const Keyframe& a, const Keyframe& b, float part)
{
    const auto mix = [part](float x, float y) { return x + (y - x) * part; };
    const glm::quat q =
        glm::slerp(glm::quat(a.q.w, a.q.x, a.q.y, a.q.z), glm::quat(b.q.w, b.q.x, b.q.y, b.q.z), part);
    return {{mix(a.p.x, b.p.x), mix(a.p.y, b.p.y), mix(a.p.z, b.p.z)}, {q.x, q.y, q.z, q.w}};
}

glm::mat4 RestPose(const Bone& bone, PoseBase base)
{
    glm::mat4 pose = ToMat4(bone.ToMatrix());
    if (base == PoseBase::Parent)
        for (auto parent = bone.Parent(); parent; parent = parent->Parent())
            pose = ToMat4(parent->ToMatrix()) * pose;
    return pose;
}

bool IsFinite(const glm::mat4& matrix)
{
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            if (!std::isfinite(matrix[i][j]))
                return false;
    return true;
}

} // namespace

glm::mat4 ToMat4(const Matrix& m)
{
    return {m.m11, m.m12, m.m13, 0, m.m21, m.m22, m.m23, 0, m.m31, m.m32, m.m33, 0, m.m41, m.m42, m.m43, 1};
}

Run RunOf(const Anim& anim)
{
    if (!anim.RootBone)
        return {};
    const auto frames = anim.RootBone->Frames();
    const auto first = std::find_if(frames.begin(), frames.end(), IsFilled);
    const auto last = std::find_if(frames.rbegin(), frames.rend(), IsFilled);
    if (first == frames.end())
        return {};
    return {static_cast<std::int32_t>(first - frames.begin()),
            static_cast<std::int32_t>(frames.size() - 1 - static_cast<std::size_t>(last - frames.rbegin()))};
}

std::unordered_map<std::u16string, const BoneAnim*> BonesByName(const Anim& anim)
{
    std::unordered_map<std::u16string, const BoneAnim*> bones;
    std::vector<std::shared_ptr<BoneAnim>> waiting;
    if (anim.RootBone)
        waiting.push_back(anim.RootBone);
    while (!waiting.empty())
    {
        const auto bone = waiting.back();
        waiting.pop_back();
        bones.emplace(bone->Name, bone.get());
        const auto children = bone->Children();
        for (std::int32_t i = children->Count(); i > 0; --i)
            if (auto child = children->Item(i))
                waiting.push_back(std::move(child));
    }
    return bones;
}

glm::mat4 Poses::Motion(const Bone& bone, double slot) const
{
    glm::mat4 pose = PoseOf(bone, slot);
    if (mBase == PoseBase::Parent)
        for (auto parent = bone.Parent(); parent; parent = parent->Parent())
            pose = PoseOf(*parent, slot) * pose;
    const glm::mat4 motion = pose * glm::inverse(RestPose(bone, mBase));
    return IsFinite(motion) ? motion : glm::mat4(1);
}

glm::mat4 Poses::PoseOf(const Bone& bone, double slot) const
{
    const double whole = std::floor(slot);
    const auto before = static_cast<std::int32_t>(whole);
    const Keyframe first = FrameOf(bone, before);
    const auto part = static_cast<float>(slot - whole);
    if (part == 0)
        return PoseMatrix(first);
    return PoseMatrix(Between(first, FrameOf(bone, before + 1), part));
}

Keyframe Poses::FrameOf(const Bone& bone, std::int32_t slot) const
{
    const auto found = mBones.find(bone.Name);
    if (found != mBones.end())
    {
        const auto frames = found->second->Frames();
        const auto index = static_cast<std::size_t>(slot);
        if (slot >= 0 && index < frames.size() && IsFilled(frames[index]))
            return frames[index];
    }
    return {bone.Position, bone.Rotation};
}

} // namespace ZLMIM::Tools
