#include "places.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <cstdint>
#include <iostream>
#include <memory>
#include <string>

namespace
{

using ZLMIM::Guide::kUnmoved;
using ZLMIM::Guide::Then;

/// The first bone of that name, parents first; none if there is none.
std::shared_ptr<ZLMIM::BoneAnim> FindBone(const std::shared_ptr<ZLMIM::BoneAnim>& bone,
                                          const std::u16string& name)
{
    if (!bone || bone->Name == name)
        return bone;
    for (const auto& child : *bone->Children())
        if (auto found = FindBone(child, name))
            return found;
    return nullptr;
}

/// The key frame of a bone in a slot as a matrix; as the bone stands in the mesh where there is none.
ZLMIM::Matrix PoseOf(const ZLMIM::Bone& bone, const ZLMIM::Anim& anim, std::int32_t slot)
{
    const auto animated = FindBone(anim.RootBone, bone.Name);
    const ZLMIM::Keyframe frame = animated ? animated->GetFrame(slot) : ZLMIM::Keyframe();
    if (frame == ZLMIM::Keyframe())
        return bone.ToMatrix();
    ZLMIM::Bone posed;
    posed.Position = frame.p;
    posed.Rotation = frame.q;
    return posed.ToMatrix();
}

/// Where a bone stands in its mesh in the frame of that slot.
ZLMIM::Matrix PlaceOf(std::shared_ptr<ZLMIM::Bone> bone, const ZLMIM::Anim& anim, std::int32_t slot)
{
    ZLMIM::Matrix place = kUnmoved;
    for (; bone; bone = bone->Parent())
        place = Then(place, PoseOf(*bone, anim, slot));
    return place;
}

} // namespace

int main()
{
    const auto asset = std::make_shared<ZLMIM::ZLMModel>();
    asset->Load(u"..\\wagon\\config.txt");
    for (const auto& entry : *asset->MeshTable())
    {
        const ZLMIM::Anim& anim = *entry->anim;
        if (!anim.RootBone || !entry->Mesh->Chunks)
            continue;
        std::cout << "frames: " << anim.FrameCount << ", a second: " << anim.FPS << '\n';
        for (const auto& chunk : *entry->Mesh->Chunks)
        {
            const auto bone = chunk->Geometry->BoneObject;
            if (!bone)
                continue;
            for (const std::int32_t slot : {0, anim.FrameCount / 2, anim.FrameCount})
            {
                const ZLMIM::Matrix place = PlaceOf(bone, anim, slot);
                std::cout << ZLMIM::ToUtf8(bone->Name) << ", slot " << slot << ": " << place.m41 << ' '
                          << place.m42 << ' ' << place.m43 << '\n';
            }
        }
    }
}
