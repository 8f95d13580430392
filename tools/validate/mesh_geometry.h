#pragma once

#include "finding.h"

#include "zlmim/mesh/geometry.h"

#include <cstdint>

namespace ZLMIM::Validate
{

/// Checks the vertices, normals and faces of the chunk with that number.
void CheckGeometry(const Geometry& geometry, std::int32_t chunk, Report& report);

} // namespace ZLMIM::Validate
