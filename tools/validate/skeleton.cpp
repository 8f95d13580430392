#include "skeleton.h"

#include "mesh_material.h"
#include "words.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

template <class AnyBone>
struct Place
{
    const AnyBone* Bone;
    int Level;
};

/// The bones of a loaded tree, each before its children: its depth and number have limits.
template <class AnyBone>
void Collect(const AnyBone& bone, int level, std::vector<Place<AnyBone>>& bones)
{
    bones.push_back({&bone, level});
    for (const auto& child : bone.Children()->Entries())
        Collect(*child, level + 1, bones);
}

template <class AnyBone>
std::vector<Place<AnyBone>> Bones(const AnyBone& root)
{
    std::vector<Place<AnyBone>> bones;
    Collect(root, 1, bones);
    return bones;
}

std::string BonePlace(std::size_t index, const std::u16string& name)
{
    return "bone " + std::to_string(index + 1) + " " + Quoted(name);
}

/// Chunks that hang from no bone, though they name one.
void JudgeBinding(const Mesh& mesh, const std::vector<Place<Bone>>& bones, Report& report)
{
    // Made when it's needed, since it seldom is.
    std::optional<std::map<std::u16string, std::u16string>> byLowerCase;
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
    {
        const std::string place = ChunkPlace(number++);
        const std::u16string& name = chunk->Geometry->Bone;
        if (name.empty() || chunk->Geometry->BoneObject)
            continue;
        if (!byLowerCase)
        {
            byLowerCase.emplace();
            for (const auto& bone : bones)
                byLowerCase->try_emplace(LowerCase(bone.Bone->Name), bone.Bone->Name);
        }
        const auto alike = byLowerCase->find(LowerCase(name));
        if (alike != byLowerCase->end())
            report.Add(Code::BoneLetterCase, place,
                       "it hangs from " + Quoted(name) + ", but the bone is called " + Quoted(alike->second));
        else
            report.Add(Code::BoneUnknown, place,
                       "it hangs from " + Quoted(name) + ", but " +
                           (bones.empty() ? "the mesh has no skeleton" : "no bone has that name"));
    }
}

bool IsEmpty(const Keyframe& frame) { return frame.q == Quaternion(); }

} // namespace

void JudgeSkeleton(const Mesh& mesh, Report& report)
{
    const auto attachments = mesh.Attachments->Entries();
    Tally badPoints;
    for (std::size_t i = 0; i < attachments.size(); ++i)
    {
        if (!AreFinite(attachments[i]->Matrix))
            badPoints.Note(static_cast<std::int64_t>(i));
    }
    if (badPoints.Count() > 0)
        report.Add(Code::NotFinite,
                   "attachment point " + std::to_string(badPoints.First() + 1) + " " +
                       Quoted(attachments[static_cast<std::size_t>(badPoints.First())]->Name),
                   "a number of its matrix is infinite or NaN" + badPoints.AndMore());

    const auto bones = mesh.RootBone ? Bones(*mesh.RootBone) : std::vector<Place<Bone>>();
    Tally badBones;
    for (std::size_t i = 0; i < bones.size(); ++i)
    {
        if (!AreFinite(bones[i].Bone->Position) || !AreFinite(bones[i].Bone->Rotation))
            badBones.Note(static_cast<std::int64_t>(i));
    }
    if (badBones.Count() > 0)
    {
        const auto first = static_cast<std::size_t>(badBones.First());
        report.Add(Code::NotFinite, BonePlace(first, bones[first].Bone->Name),
                   "its pose is infinite or NaN" + badBones.AndMore());
    }
    JudgeBinding(mesh, bones, report);
}

Tally UnfilledSlots(const Anim& anim)
{
    const auto bones = Bones(*anim.RootBone);
    const auto isUnfilled = [&bones](std::size_t slot)
    {
        return std::all_of(bones.begin(), bones.end(),
                           [slot](const auto& place) { return IsEmpty(place.Bone->Frames()[slot]); });
    };
    std::size_t first = 0;
    std::size_t end = anim.RootBone->Frames().size();
    if (end > 0 && isUnfilled(end - 1))
        --end;
    else if (end > 0 && isUnfilled(0))
        ++first;
    Tally slots;
    for (std::size_t slot = first; slot < end; ++slot)
    {
        if (isUnfilled(slot))
            slots.Note(static_cast<std::int64_t>(slot));
    }
    return slots;
}

void JudgeFrames(const Anim& anim, Report& report)
{
    const Tally unfilled = UnfilledSlots(anim);
    if (unfilled.Count() > 0)
        report.Add(Code::FrameUnfilled, "slot " + std::to_string(unfilled.First()),
                   "no frame fills it" + unfilled.AndMore());
    if (!AreFinite(anim.MetScale))
        report.Add(Code::NotFinite, "", "the scale is infinite or NaN");
    const auto bones = Bones(*anim.RootBone);
    Tally bad;
    std::string place;
    for (std::size_t i = 0; i < bones.size(); ++i)
    {
        const auto frames = bones[i].Bone->Frames();
        for (std::size_t slot = 0; slot < frames.size(); ++slot)
        {
            if (AreFinite(frames[slot]))
                continue;
            if (bad.Count() == 0)
                place = BonePlace(i, bones[i].Bone->Name) + ", slot " + std::to_string(slot);
            bad.Note(static_cast<std::int64_t>(i));
        }
    }
    if (bad.Count() > 0)
        report.Add(Code::NotFinite, place, "the pose is infinite or NaN" + bad.AndMore());
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
