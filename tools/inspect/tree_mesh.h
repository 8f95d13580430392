#ifndef INSPECT_TREE_MESH_H
#define INSPECT_TREE_MESH_H

#include "tree.h"

namespace ZLMIM::Inspect
{

/// Adds the materials of a mesh, with their textures.
void AddMaterials(Node& node, const Mesh& mesh);

} // namespace ZLMIM::Inspect

#endif
