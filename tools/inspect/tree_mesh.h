#pragma once

#include "tree.h"

namespace ZLMIM::Inspect
{

/// Adds the materials of a mesh, with their textures.
void AddMaterials(Node& node, const Mesh& mesh);

} // namespace ZLMIM::Inspect
