#ifndef VALIDATE_MESH_MATERIAL_H
#define VALIDATE_MESH_MATERIAL_H

#include "finding.h"

#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <cstdint>
#include <string>

namespace ZLMIM::Validate
{

/// Judges the numbers of a mesh's materials, and looks for their textures in the mesh's folder, by its name
/// with a separator behind it. A texture is there if a file has its name, in any letter case and with any
/// ending, or several, in the place of the texture's own.
void JudgeMaterials(const Mesh& mesh, const NativePath& folder, PathResolver& names, Report& report);

/// "chunk 2", by its number from 1.
[[nodiscard]] std::string ChunkPlace(std::int32_t number);

} // namespace ZLMIM::Validate

#endif
