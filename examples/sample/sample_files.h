#ifndef ZLMIM_EXAMPLES_SAMPLE_SAMPLE_FILES_H
#define ZLMIM_EXAMPLES_SAMPLE_SAMPLE_FILES_H

#include "tests/block_writer.h"

namespace Sample
{

using ZLMIM::Testing::Bytes;

/// A covered wagon: underframe, sides and two sliding doors with their handles, each on its bone, and
/// attachment points for bogeys, buffers and a load. Long and short materials.
[[nodiscard]] Bytes WagonMesh();

/// The wagon's doors open and shut: the skeleton of `WagonMesh` in 25 frames.
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
