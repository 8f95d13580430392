#pragma once

#include "tests/block_writer.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Sample
{

/// Points, faces and their normals, to become one GEOM block. Seen from its front, a face runs anticlockwise.
struct Shape
{
    std::vector<ZLMIM::Vertex> vertices;
    std::vector<ZLMIM::Vector> normals;
    std::vector<std::int16_t> indices;
    std::vector<ZLMIM::Vector> faceNormals;
};

/// Adds a box, its sides parallel to the axes. Lengths in metres.
void AddBox(Shape& shape, const ZLMIM::Vector& centre, const ZLMIM::Vector& size);

/// Adds a cylinder along an axis (0 for x, 1 for y, 2 for z), with both caps. Lengths in metres.
void AddCylinder(Shape& shape, int axis, const ZLMIM::Vector& centre, float length, float radius, int sides);

/// Appends the GEOM block of a shape of triangles that hangs from `bone`.
void AppendGeometry(ZLMIM::Testing::Bytes& payload, const Shape& shape, const std::string& bone,
                    std::int32_t version);

} // namespace Sample
