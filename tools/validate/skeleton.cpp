#include "skeleton.h"

#include "finite.h"
#include "mesh_material.h"
#include "spelling.h"
#include "tally.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

template <class AnyBone>
struct PlacedBone
{
    const AnyBone* Bone;
    int Level;
};

/// Collects the bones of a loaded tree, each before its children. The library limits their depth and number.
template <class AnyBone>
void Collect(const AnyBone& bone, int level, std::vector<PlacedBone<AnyBone>>& bones)
{
    bones.push_back({&bone, level});
    for (const auto& child : bone.Children()->Entries())
        Collect(*child, level + 1, bones);
}

template <class AnyBone>
std::vector<PlacedBone<AnyBone>> Bones(const AnyBone& root)
{
    std::vector<PlacedBone<AnyBone>> bones;
    Collect(root, 1, bones);
    return bones;
}

std::string BonePlace(std::size_t index, const std::u16string& name)
{
    return "bone " + std::to_string(index + 1) + " " + Quoted(name);
}

/// Reports chunks that name a bone that doesn't exist.
void CheckBinding(const Mesh& mesh, const std::vector<PlacedBone<Bone>>& bones, Report& report)
{
    std::vector<std::u16string> names;
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
    {
        const Place place = ChunkPlace(number++);
        const std::u16string& name = chunk->Geometry->Bone;
        if (name.empty() || chunk->Geometry->BoneObject)
            continue;
        if (names.empty())
            for (const auto& bone : bones)
                names.push_back(bone.Bone->Name);
        const auto alike =
            std::find_if(names.begin(), names.end(),
                         [&](const std::u16string& other) { return LowerCase(other) == LowerCase(name); });
        if (alike != names.end())
            report.Add(Code::BoneLetterCase, place,
                       "it hangs from " + Quoted(name) + ", but the bone is called " + Quoted(*alike));
        else
            report.Add(Code::BoneUnknown, place,
                       "it hangs from " + Quoted(name) + ", but " +
                           (bones.empty() ? "the mesh has no skeleton" : "no bone has that name") +
                           DidYouMean(name, names));
    }
}

/// Reports names that are empty, or occurred before. `placeOf(index)` is the place of the named thing.
template <class PlaceOf>
void CheckNames(const std::vector<std::u16string>& names, const char* what, PlaceOf placeOf, Report& report)
{
    std::map<std::u16string_view, std::size_t> firsts;
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        if (names[i].empty())
        {
            report.Add(Code::NameMissing, {.Detail = placeOf(i)},
                       "it has no name, so nothing can refer to it");
            continue;
        }
        const auto [first, isNew] = firsts.try_emplace(names[i], i);
        if (!isNew)
            report.Add(Code::NameTwice, {.Detail = placeOf(i)},
                       "it has the name of " + std::string(what) + " " + std::to_string(first->second + 1) +
                           ", and only that one is found by name");
    }
}

/// How far the length of a rotation may be from 1.
constexpr float kRotationTolerance = 0.01F;

bool IsZero(const Quaternion& q) { return q == Quaternion(); }

bool IsUnit(const Quaternion& q)
{
    const float length = std::hypot(std::hypot(q.x, q.y, q.z), q.w);
    return std::abs(length - 1) <= kRotationTolerance;
}

bool IsZero(const Matrix& m)
{
    return m.m11 == 0 && m.m12 == 0 && m.m13 == 0 && m.m21 == 0 && m.m22 == 0 && m.m23 == 0 && m.m31 == 0 &&
           m.m32 == 0 && m.m33 == 0;
}

/// Whether a matrix with a row other than zero turns a body into a plane or a line.
bool IsFlat(const Matrix& m)
{
    constexpr double kLeastVolume = 1e-6;
    const auto length = [](double x, double y, double z) { return std::hypot(x, y, z); };
    const double volume = m.m11 * (double{m.m22} * m.m33 - double{m.m23} * m.m32) -
                          m.m12 * (double{m.m21} * m.m33 - double{m.m23} * m.m31) +
                          m.m13 * (double{m.m21} * m.m32 - double{m.m22} * m.m31);
    return std::abs(volume) <= kLeastVolume * length(m.m11, m.m12, m.m13) * length(m.m21, m.m22, m.m23) *
                                   length(m.m31, m.m32, m.m33);
}

void CheckAttachments(const Mesh& mesh, Report& report)
{
    const auto attachments = mesh.Attachments->Entries();
    const auto placeOf = [&](std::size_t i)
    { return "attachment point " + std::to_string(i + 1) + " " + Quoted(attachments[i]->Name); };
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < attachments.size(); ++i)
    {
        names.push_back(attachments[i]->Name);
        if (!AreFinite(attachments[i]->Matrix))
            report.Add(Code::NotFinite, {.Detail = placeOf(i)}, "a number of its matrix is infinite or NaN");
        else if (IsZero(attachments[i]->Matrix))
            report.Add(Code::ZeroTransform, {.Detail = placeOf(i)},
                       "its matrix is all zeros, so what hangs on it shrinks to a point");
        else if (IsFlat(attachments[i]->Matrix))
            report.Add(
                Code::ZeroTransform, {.Detail = placeOf(i)},
                "its matrix has a row of zeros, or rows in one plane, so what hangs on it is flattened");
    }
    CheckNames(names, "attachment point", placeOf, report);
}

void CheckBones(const std::vector<PlacedBone<Bone>>& bones, Report& report)
{
    const auto placeOf = [&](std::size_t i) { return BonePlace(i, bones[i].Bone->Name); };
    std::vector<std::u16string> names;
    Tally bad;
    Tally zero;
    Tally notUnit;
    for (std::size_t i = 0; i < bones.size(); ++i)
    {
        const auto number = static_cast<std::int64_t>(i);
        const Bone& bone = *bones[i].Bone;
        names.push_back(bone.Name);
        if (!AreFinite(bone.Position) || !AreFinite(bone.Rotation))
            bad.Note(number);
        else if (IsZero(bone.Rotation))
            zero.Note(number);
        else if (!IsUnit(bone.Rotation))
            notUnit.Note(number);
    }
    const auto add = [&](Code code, const Tally& tally, const char* message)
    {
        if (tally.Count() > 0)
            report.Add(code, {.Detail = placeOf(static_cast<std::size_t>(tally.First()))},
                       message + tally.AndMore());
    };
    add(Code::NotFinite, bad, "its pose is infinite or NaN");
    add(Code::ZeroTransform, zero, "its rotation is all zeros");
    add(Code::RotationLength, notUnit, "its rotation isn't of length 1");
    CheckNames(names, "bone", placeOf, report);
}

/// For each slot of an animation's table, whether a frame has filled it.
std::vector<bool> FilledSlots(const std::vector<PlacedBone<BoneAnim>>& bones)
{
    std::vector<bool> filled(bones.front().Bone->Frames().size());
    for (const auto& bone : bones)
        for (std::size_t slot = 0; slot < filled.size(); ++slot)
            filled[slot] = filled[slot] || bone.Bone->Frames()[slot] != Keyframe();
    return filled;
}

} // namespace

void CheckSkeleton(const Mesh& mesh, Report& report)
{
    CheckAttachments(mesh, report);
    const auto bones = mesh.RootBone ? Bones(*mesh.RootBone) : std::vector<PlacedBone<Bone>>();
    CheckBones(bones, report);
    CheckBinding(mesh, bones, report);
}

Tally UnfilledSlots(const Anim& anim)
{
    const std::vector<bool> filled = FilledSlots(Bones(*anim.RootBone));
    std::size_t first = 0;
    std::size_t end = filled.size();
    if (end > 0 && !filled[end - 1])
        --end;
    else if (end > 0 && !filled[0])
        ++first;
    Tally slots;
    for (std::size_t slot = first; slot < end; ++slot)
    {
        if (!filled[slot])
            slots.Note(static_cast<std::int64_t>(slot));
    }
    return slots;
}

void CheckFrames(const Anim& anim, Report& report)
{
    if (anim.FrameCount == 0)
        report.Add(Code::AnimationRate, {}, "it has no frames");
    if (anim.FPS <= 0)
        report.Add(Code::AnimationRate, {},
                   "a rate of " + std::to_string(anim.FPS) + " frames a second, so it never moves");
    const Tally unfilled = UnfilledSlots(anim);
    if (unfilled.Count() > 0)
        report.Add(Code::FrameUnfilled, {.Detail = "slot " + std::to_string(unfilled.First())},
                   "no frame fills it" + unfilled.AndMore());
    if (!AreFinite(anim.MetScale))
        report.Add(Code::NotFinite, {}, "the scale is infinite or NaN");
    const auto bones = Bones(*anim.RootBone);
    const std::vector<bool> filled = FilledSlots(bones);
    const auto check = [&](Code code, const char* message, auto isWrong)
    {
        Tally wrong;
        std::string place;
        for (std::size_t i = 0; i < bones.size(); ++i)
        {
            const auto frames = bones[i].Bone->Frames();
            for (std::size_t slot = 0; slot < frames.size(); ++slot)
            {
                if (!filled[slot] || !isWrong(frames[slot]))
                    continue;
                if (wrong.Count() == 0)
                    place = BonePlace(i, bones[i].Bone->Name) + ", slot " + std::to_string(slot);
                wrong.Note(static_cast<std::int64_t>(i));
            }
        }
        if (wrong.Count() > 0)
            report.Add(code, {.Detail = place}, message + wrong.AndMore());
    };
    check(Code::NotFinite, "the pose is infinite or NaN",
          [](const Keyframe& frame) { return !AreFinite(frame); });
    check(Code::ZeroTransform, "the rotation is all zeros",
          [](const Keyframe& frame) { return IsZero(frame.q); });
    check(Code::RotationLength, "the rotation isn't of length 1",
          [](const Keyframe& frame) { return AreFinite(frame) && !IsZero(frame.q) && !IsUnit(frame.q); });
}

std::string TreeDifference(const Bone& skeleton, const BoneAnim& animation)
{
    const auto inMesh = Bones(skeleton);
    const auto inAnim = Bones(animation);
    const auto [mesh, anim] = std::mismatch(inMesh.begin(), inMesh.end(), inAnim.begin(), inAnim.end(),
                                            [](const auto& a, const auto& b)
                                            { return a.Bone->Name == b.Bone->Name && a.Level == b.Level; });
    if (mesh == inMesh.end() && anim == inAnim.end())
        return {};
    const auto index = static_cast<std::size_t>(mesh - inMesh.begin());
    if (anim == inAnim.end())
        return "it ends before the mesh's " + BonePlace(index, mesh->Bone->Name);
    if (mesh == inMesh.end())
        return "its " + BonePlace(index, anim->Bone->Name) + " is one more than the mesh has";
    if (mesh->Bone->Name == anim->Bone->Name)
        return "its " + BonePlace(index, anim->Bone->Name) + " is at level " + std::to_string(anim->Level) +
               ", the mesh's at level " + std::to_string(mesh->Level);

    std::multiset<std::u16string_view> meshNames;
    std::multiset<std::u16string_view> animNames;
    for (const auto& place : inMesh)
        meshNames.insert(place.Bone->Name);
    for (const auto& place : inAnim)
        animNames.insert(place.Bone->Name);
    return "its " + BonePlace(index, anim->Bone->Name) + " is " + Quoted(mesh->Bone->Name) + " in the mesh" +
           (meshNames == animNames ? ", which has the same names in another order" : "");
}

} // namespace ZLMIM::Validate
