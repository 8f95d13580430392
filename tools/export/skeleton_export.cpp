#include "skeleton_export.h"

#include <cmath>
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <utility>

namespace ZLMIM::Export
{
namespace
{

bool IsFinite(const Vector& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

/// The rotation that `Bone::ToMatrix` gives for a quaternion, for points that are columns, at unit length.
/// `std::nullopt` if it has no length, or an infinite one.
std::optional<glm::dquat> RotationOf(const Quaternion& q)
{
    const double length =
        std::sqrt(double{q.x} * q.x + double{q.y} * q.y + double{q.z} * q.z + double{q.w} * q.w);
    if (!(length > 0) || !std::isfinite(length))
        return std::nullopt;
    return glm::dquat(q.w / length, -q.x / length, -q.y / length, -q.z / length);
}

bool IsUnit(const Quaternion& q)
{
    constexpr double kTolerance = 1e-3;
    return std::abs(double{q.x} * q.x + double{q.y} * q.y + double{q.z} * q.z + double{q.w} * q.w - 1) <
           kTolerance;
}

std::array<float, 4> Floats(const glm::dquat& q)
{
    return {static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z),
            static_cast<float>(q.w)};
}

constexpr const char* kQuaternionRepair = "rotations of bones that aren't of unit length are normalised";

} // namespace

SkeletonExport::SkeletonExport(const Bone& root, Tools::PoseBase base, const Report& report)
{
    std::vector<std::pair<const Bone*, std::optional<std::size_t>>> waiting = {{&root, {}}};
    while (!waiting.empty())
    {
        const auto [bone, parent] = waiting.back();
        waiting.pop_back();
        const auto children = bone->Children();
        const std::int32_t childCount = children ? children->Count() : 0;
        if (bone->Name.empty() && childCount == 0 && parent)
        {
            report("bones without a name and children, on which nothing can hang, are skipped");
            continue;
        }
        Joint joint = {bone, base == Tools::PoseBase::Parent ? parent : std::nullopt};
        if (IsFinite(bone->Position))
            joint.Translation = {bone->Position.x, bone->Position.y, bone->Position.z};
        else
            report("infinite or undefined positions of bones are taken as 0");
        const auto rotation = RotationOf(bone->Rotation);
        joint.Rotation = Floats(rotation.value_or(glm::dquat(1, 0, 0, 0)));
        if (!rotation)
            report("rotations of bones that are all 0, infinite or undefined are taken as no rotation");
        else if (!IsUnit(bone->Rotation))
            report(kQuaternionRepair);
        mNumbers.emplace(bone, mJoints.size());
        for (std::int32_t i = childCount; i > 0; --i)
            if (const auto& child = children->Entries()[static_cast<std::size_t>(i - 1)])
                waiting.emplace_back(child.get(), mJoints.size());
        mJoints.push_back(std::move(joint));
    }
}

std::optional<std::size_t> SkeletonExport::Find(const Bone* bone) const
{
    const auto found = mNumbers.find(bone);
    return found == mNumbers.end() ? std::nullopt : std::optional(found->second);
}

Index SkeletonExport::AddInverseBindMatrices(Document& document, const Report& report) const
{
    // From a joint's space to the mesh's.
    std::vector<glm::dmat4> rests;
    std::vector<glm::mat4> inverses;
    for (const Joint& joint : mJoints)
    {
        const auto& [x, y, z, w] = joint.Rotation;
        glm::dmat4 rest = glm::mat4_cast(glm::normalize(glm::dquat(w, x, y, z)));
        rest[3] = glm::dvec4(joint.Translation[0], joint.Translation[1], joint.Translation[2], 1);
        if (joint.Parent)
            rest = rests[*joint.Parent] * rest;
        rests.push_back(rest);
        const glm::dmat3 turn = glm::transpose(glm::dmat3(rest));
        glm::dmat4 inverse(turn);
        inverse[3] = glm::dvec4(-(turn * glm::dvec3(rest[3])), 1);
        inverses.emplace_back(inverse);
        const glm::vec4& place = inverses.back()[3];
        if (!std::isfinite(place.x) || !std::isfinite(place.y) || !std::isfinite(place.z))
        {
            report("bones are too far away to bind chunks to them at their place");
            inverses.back() = glm::mat4(1);
        }
    }
    const std::size_t count = inverses.size();
    return AddAccessor(document,
                       {.View = AddView(document, std::move(inverses)), .Count = count, .Type = "MAT4"});
}

void SkeletonExport::AddJoints(Index parent, Document& document)
{
    for (Joint& joint : mJoints)
    {
        const Index node = document.Nodes.size();
        document.Nodes.push_back({.Name = joint.Source->Name,
                                  .Kind = "bone",
                                  .Translation = joint.Translation,
                                  .Rotation = joint.Rotation});
        document.Nodes[joint.Parent ? mJoints[*joint.Parent].Nodes.back() : parent].Children.push_back(node);
        joint.Nodes.push_back(node);
    }
}

Index SkeletonExport::AddSkin(Document& document, const Report& report)
{
    if (!mInverseBindMatrices)
        mInverseBindMatrices = AddInverseBindMatrices(document, report);
    Skin skin = {*mInverseBindMatrices, {}};
    for (const Joint& joint : mJoints)
        skin.Joints.push_back(joint.Nodes.back());
    document.Skins.push_back(std::move(skin));
    return document.Skins.size() - 1;
}

void SkeletonExport::AddAnimation(const Anim& anim, const std::u16string& entry, Document& document,
                                  const Report& report) const
{
    constexpr std::int32_t kUsualRate = 30;
    const bool hasRate = anim.FPS > 0;
    Animation animation = {
        anim.Name.empty() ? entry : anim.Name, entry, hasRate ? anim.FPS : kUsualRate, {}, {}};
    Times last;
    // Joints of one name share their samplers.
    std::unordered_map<const BoneAnim*, std::optional<Samplers>> known;
    const auto bones = Tools::BonesByName(anim);
    for (const Joint& joint : mJoints)
    {
        const auto bone = bones.find(joint.Source->Name);
        if (bone == bones.end())
            continue;
        const auto [samplers, isNew] = known.try_emplace(bone->second);
        if (isNew)
            samplers->second = AddSamplers(*bone->second, last, animation, document, report);
        for (const Index node : samplers->second ? joint.Nodes : std::vector<Index>())
        {
            animation.Channels.push_back({samplers->second->Translation, node, false});
            animation.Channels.push_back({samplers->second->Rotation, node, true});
        }
    }
    if (animation.Channels.empty())
        return;
    if (!hasRate)
        report("the animation has no frames per second, so it is given 30");
    document.Animations.push_back(std::move(animation));
}

std::optional<SkeletonExport::Samplers> SkeletonExport::AddSamplers(const BoneAnim& bone, Times& last,
                                                                    Animation& animation, Document& document,
                                                                    const Report& report)
{
    std::vector<float> times;
    std::vector<Vector> positions;
    std::vector<std::array<float, 4>> rotations;
    const auto frames = bone.Frames();
    glm::dquat before(0, 0, 0, 0);
    for (std::size_t slot = 0; slot < frames.size(); ++slot)
    {
        const Keyframe& frame = frames[slot];
        if (frame.q == Quaternion()) // no frame filled this slot
            continue;
        auto rotation = RotationOf(frame.q);
        const float time = static_cast<float>(static_cast<double>(slot) / animation.FramesPerSecond);
        if (!rotation || !IsFinite(frame.p))
        {
            report("infinite or undefined poses in frames are skipped");
            continue;
        }
        if (!times.empty() && time <= times.back())
        {
            report("frames that 32-bit times can't tell apart are skipped");
            continue;
        }
        if (!IsUnit(frame.q))
            report(kQuaternionRepair);
        // The shorter way from the frame before.
        if (glm::dot(before, *rotation) < 0)
            rotation = -*rotation;
        before = *rotation;
        times.push_back(time);
        positions.push_back(frame.p);
        rotations.push_back(Floats(*rotation));
    }
    if (times.empty())
        return std::nullopt;
    const std::size_t count = times.size();
    if (times != last.Seconds)
    {
        last.Seconds = times;
        last.Input = AddAccessor(document, {.View = AddView(document, std::move(times)),
                                            .Count = count,
                                            .Min = {last.Seconds.front()},
                                            .Max = {last.Seconds.back()}});
    }
    const Index translation = AddAccessor(
        document, {.View = AddView(document, std::move(positions)), .Count = count, .Type = "VEC3"});
    const Index rotation = AddAccessor(
        document, {.View = AddView(document, std::move(rotations)), .Count = count, .Type = "VEC4"});
    animation.Samplers.push_back({last.Input, translation});
    animation.Samplers.push_back({last.Input, rotation});
    return Samplers{animation.Samplers.size() - 2, animation.Samplers.size() - 1};
}

} // namespace ZLMIM::Export
