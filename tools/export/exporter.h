#pragma once

#include "gltf.h"
#include "repairs.h"

#include "tools/common/asset.h"
#include "tools/common/poses.h"

#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/path_resolver.h"

namespace ZLMIM::Export
{

enum class UpAxis
{
    /// The asset's z is up, and its y forward. The root node turns z to glTF's y, which is up there, and y to
    /// its -z.
    Z,
    /// All coordinates are taken as they are.
    Y,
};

struct Options
{
    UpAxis Up = UpAxis::Z;
    /// Metres of a unit; more than 0.
    float Scale = 1;
    /// Whether v becomes 1 - v. Texture coordinates are as stored otherwise: glTF's v runs down.
    bool IsVFlipped = false;
    Tools::PoseBase Poses = Tools::PoseBase::Parent;
};

/// A loaded asset or mesh as glTF, as far as it was loaded. The result refers to arrays of the object, which
/// mustn't be changed before it is written, but may be released. `repairs` takes what had to be changed or
/// skipped. `names` finds the textures.
///
/// The scene has a root node, below it a node for each entry, attachment point, bone, bogey and pantograph
/// (see `Tools::Assembly`). A mesh with a skin is a node beside the root, as glTF asks.
[[nodiscard]] Document ToGltf(const ZLMModel& model, const Options& options, PathResolver& names,
                              Repairs& repairs);
/// `mesh` becomes an entry, named after its file.
[[nodiscard]] Document ToGltf(const Mesh& mesh, const Options& options, PathResolver& names,
                              Repairs& repairs);

/// The same for an object that isn't an animation.
[[nodiscard]] Document ToGltf(const Tools::Asset& asset, const Options& options, PathResolver& names,
                              Repairs& repairs);

} // namespace ZLMIM::Export
