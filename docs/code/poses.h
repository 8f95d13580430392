#pragma once

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/bone.h"
#include "zlmim/model/records.h"

#include <memory>

namespace ZLMIM::Guide
{

/// Takes points of a bone to the space of its mesh, at a slot of the animation such as 2.5.
[[nodiscard]] Matrix BoneTransform(std::shared_ptr<const Bone> bone, const Anim& anim, float slot);

/// Takes points of a chunk that hangs from `bone` from where the file has them to where they are at a slot.
[[nodiscard]] Matrix ChunkMotion(const std::shared_ptr<const Bone>& bone, const Anim& anim, float slot);

} // namespace ZLMIM::Guide
