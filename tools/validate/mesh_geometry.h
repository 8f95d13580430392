#ifndef VALIDATE_MESH_GEOMETRY_H
#define VALIDATE_MESH_GEOMETRY_H

#include "finding.h"

#include "zlmim/mesh/geometry.h"

#include <string>

namespace ZLMIM::Validate
{

/// Judges the vertices, normals and faces of a chunk, as a load has left them. `chunk` is its place.
void JudgeGeometry(const Geometry& geometry, const std::string& chunk, Report& report);

} // namespace ZLMIM::Validate

#endif
