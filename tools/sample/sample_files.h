#ifndef ZLMIM_TOOLS_SAMPLE_SAMPLE_FILES_H
#define ZLMIM_TOOLS_SAMPLE_SAMPLE_FILES_H

#include "tests/block_writer.h"

namespace Sample
{

using ZLMIM::Testing::Bytes;

/// A covered wagon, its length along the y axis: underframe, sides and two sliding doors with their handles,
/// each on its bone, the right door open; attachment points for bogeys, couplings, a load and things on
/// the roof. Long and short materials.
[[nodiscard]] Bytes WagonMesh();

/// The wagon's left door opens and shuts while the right one shuts and opens: the skeleton of `WagonMesh` in
/// 25 frames.
[[nodiscard]] Bytes WagonAnimation();

/// Two crates and a barrel, as the wagon's load. The barrel has `sides` sides: more for a level of more
/// detail.
[[nodiscard]] Bytes LoadMesh(int sides);

/// A bogey with two axles.
[[nodiscard]] Bytes BogeyMesh();

/// A pantograph of a few bars.
[[nodiscard]] Bytes PantographMesh();

/// A small TGA picture, white, so that each surface has the colour of its material.
[[nodiscard]] Bytes WhitePicture();

} // namespace Sample

#endif
