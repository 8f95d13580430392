#ifndef VALIDATE_SKELETON_H
#define VALIDATE_SKELETON_H

#include "finding.h"
#include "words.h"

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"

#include <string>

namespace ZLMIM::Validate
{

/// Judges the attachment points and the bones of a mesh, and whether each chunk found the bone that it names.
void JudgeSkeleton(const Mesh& mesh, Report& report);

/// Judges the key frames of an animation, which has a tree of bones.
void JudgeFrames(const Anim& anim, Report& report);

/// Slots that no frame filled, among those that one ought to fill: a table has one more than there are
/// frames, so the last may be empty, or else the first. A filled slot has a rotation, which isn't all zero.
[[nodiscard]] Tally UnfilledSlots(const Anim& anim);

/// How the bones of an animation differ first from those of a mesh, in the order of both trees; empty if they
/// don't.
[[nodiscard]] std::string TreeDifference(const Bone& skeleton, const BoneAnim& animation);

} // namespace ZLMIM::Validate

#endif
