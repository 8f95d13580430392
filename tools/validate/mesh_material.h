#pragma once

#include "finding.h"

#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <cstdint>
#include <string>

namespace ZLMIM::Validate
{

/// Checks the materials of a mesh, and that its textures' files are in the mesh's folder, which is named with
/// a separator at its end.
void CheckMaterials(const Mesh& mesh, const NativePath& folder, PathResolver& names, Report& report);

/// A place in the chunk with that number.
[[nodiscard]] Place ChunkPlace(std::int32_t number, std::string detail = {});

} // namespace ZLMIM::Validate
