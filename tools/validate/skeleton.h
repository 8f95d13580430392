#pragma once

#include "finding.h"
#include "tally.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <string>

namespace ZLMIM::Validate
{

/// Checks the attachment points and bones of a mesh, and that each chunk's bone exists.
void CheckSkeleton(const Mesh& mesh, Report& report);

/// Checks the key frames of an animation that has a tree of bones.
void CheckFrames(const Anim& anim, Report& report);

/// Slots that no frame has filled. A table has one slot more than there are frames, so an empty last or first
/// one doesn't count. A slot in which all poses are zeros counts as unfilled.
[[nodiscard]] Tally UnfilledSlots(const Anim& anim);

/// The first difference between an animation's bones and a mesh's, in the order of both trees; empty if there
/// is none.
[[nodiscard]] std::string TreeDifference(const Bone& skeleton, const BoneAnim& animation);

} // namespace ZLMIM::Validate
