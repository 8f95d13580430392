#pragma once

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

/// A bogey with two axles, each on its bone.
[[nodiscard]] Bytes BogeyMesh();

/// The bogey's wheels turn once, as they do on the way forward: the skeleton of `BogeyMesh` in 25 frames.
[[nodiscard]] Bytes BogeyAnimation();

/// A pantograph of a few bars.
[[nodiscard]] Bytes PantographMesh();

// The pictures of textures: small TGA files, in shades of grey that multiply the colours of materials.
[[nodiscard]] Bytes UnderframePicture();
[[nodiscard]] Bytes PlanksPicture();
[[nodiscard]] Bytes PlanksBumpPicture();
[[nodiscard]] Bytes DoorsPicture();
[[nodiscard]] Bytes SkyPicture();
[[nodiscard]] Bytes CratePicture();
[[nodiscard]] Bytes WheelPicture();

} // namespace Sample
