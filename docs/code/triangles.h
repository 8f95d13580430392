#pragma once

#include "zlmim/mesh/geometry.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ZLMIM::Guide
{

/// The indices of three vertices.
using Triangle = std::array<std::int32_t, 3>;

/// The triangles that the indices describe, all with the same winding. Empty for lines and points. Skips
/// triangles with an index outside the vertices.
[[nodiscard]] std::vector<Triangle> Triangles(const Geometry& geometry);

} // namespace ZLMIM::Guide
