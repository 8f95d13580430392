#ifndef ZLMIM_DOCS_CODE_TRIANGLES_H
#define ZLMIM_DOCS_CODE_TRIANGLES_H

#include "zlmim/mesh/geometry.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ZLMIM::Guide
{

/// Numbers of three vertices, from 0.
using Triangle = std::array<std::int32_t, 3>;

/// The triangles that the indices describe, all the same way round. What isn't made of triangles has none,
/// and one with a corner that isn't there is left out.
[[nodiscard]] std::vector<Triangle> Triangles(const Geometry& geometry);

} // namespace ZLMIM::Guide

#endif
