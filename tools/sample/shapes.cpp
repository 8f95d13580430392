#include "tools/sample/shapes.h"

#include <array>
#include <cmath>
#include <numbers>

namespace Sample
{

using ZLMIM::Vector;
using ZLMIM::Vertex;
using ZLMIM::Testing::Bytes;

namespace
{

struct Corner
{
    Vector point;
    Vector normal;
    float u = 0, v = 0;
};

/// Adds a flat quadrilateral as two triangles, its corners in turn.
void AddQuad(Shape& shape, const std::array<Corner, 4>& corners, const Vector& faceNormal)
{
    const auto first = static_cast<std::int16_t>(shape.vertices.size());
    for (const auto& [point, normal, u, v] : corners)
    {
        shape.vertices.push_back({point.x, point.y, point.z, u, v});
        shape.normals.push_back(normal);
    }
    for (const int corner : {0, 1, 2, 0, 2, 3})
        shape.indices.push_back(static_cast<std::int16_t>(first + corner));
    shape.faceNormals.insert(shape.faceNormals.end(), 2, faceNormal);
}

} // namespace

void AddBox(Shape& shape, const Vector& centre, const Vector& size)
{
    for (const int axis : {0, 1, 2})
    {
        for (const float sign : {-1.0F, 1.0F})
        {
            // The side's own directions: `out` along the axis, `right` and `up` across it.
            const auto unit = [axis](int offset, float length)
            {
                const int direction = (axis + offset) % 3;
                return Vector{direction == 0 ? length : 0, direction == 1 ? length : 0,
                              direction == 2 ? length : 0};
            };
            const Vector out = unit(0, sign);
            const Vector right = unit(1, sign);
            const Vector up = unit(2, 1);
            const auto corner = [&](float r, float u)
            {
                const Vector d = {out.x + r * right.x + u * up.x, out.y + r * right.y + u * up.y,
                                  out.z + r * right.z + u * up.z};
                return Corner{
                    {centre.x + d.x * size.x / 2, centre.y + d.y * size.y / 2, centre.z + d.z * size.z / 2},
                    out,
                    (r + 1) / 2,
                    (u + 1) / 2};
            };
            AddQuad(shape, {corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)}, out);
        }
    }
}

void AddCylinder(Shape& shape, int axis, const Vector& centre, float length, float radius, int sides)
{
    // Made along the x axis, then turned by changing the axes round.
    const auto turned = [axis](const Vector& v)
    {
        const std::array<Vector, 3> turns = {{{v.x, v.y, v.z}, {v.z, v.x, v.y}, {v.y, v.z, v.x}}};
        return turns.at(static_cast<std::size_t>(axis));
    };
    const auto direction = [sides](float side)
    {
        const float angle = 2 * std::numbers::pi_v<float> * side / static_cast<float>(sides);
        return Vector{0, std::cos(angle), std::sin(angle)};
    };
    const auto corner = [&](const Vector& d, float along, const Vector& normal)
    {
        const Vector offset = turned({along * length / 2, d.y * radius, d.z * radius});
        return Corner{{centre.x + offset.x, centre.y + offset.y, centre.z + offset.z},
                      turned(normal),
                      (d.y + 1) / 2,
                      (d.z + 1) / 2};
    };
    const Vector origin = {};
    for (int side = 0; side < sides; ++side)
    {
        const auto number = static_cast<float>(side);
        const Vector a = direction(number);
        const Vector b = direction(number + 1);
        AddQuad(shape, {corner(a, -1, a), corner(b, -1, b), corner(b, 1, b), corner(a, 1, a)},
                turned(direction(number + 0.5F)));
        for (const float end : {-1.0F, 1.0F})
        {
            const Vector out = {end, 0, 0};
            const auto first = static_cast<std::int16_t>(shape.vertices.size());
            for (const Vector& d : {origin, end > 0 ? a : b, end > 0 ? b : a})
            {
                const Corner c = corner(d, end, out);
                shape.vertices.push_back({c.point.x, c.point.y, c.point.z, c.u, c.v});
                shape.normals.push_back(c.normal);
            }
            for (const int i : {0, 1, 2})
                shape.indices.push_back(static_cast<std::int16_t>(first + i));
            shape.faceNormals.push_back(turned(out));
        }
    }
}

void AppendGeometry(Bytes& payload, const Shape& shape, const std::string& bone, std::int32_t version)
{
    Bytes geometry;
    geometry.Long(version).Long(static_cast<std::int32_t>(ZLMIM::PrimFlag::TRIANGLES));
    if (version > 200)
        geometry.Long(0);
    geometry.Single(0)
        .Long(static_cast<std::int32_t>(shape.vertices.size()))
        .Long(static_cast<std::int32_t>(shape.indices.size() / 3))
        .Long(static_cast<std::int32_t>(shape.indices.size()))
        .Long(static_cast<std::int32_t>(shape.faceNormals.size()))
        .Long(0)
        .String(bone);
    for (const Vertex& vertex : shape.vertices)
        geometry.Record(vertex);
    for (const std::int16_t index : shape.indices)
        geometry.Short(index);
    for (const Vector& normal : shape.normals)
        geometry.Record(normal);
    for (const Vector& normal : shape.faceNormals)
        geometry.Record(normal);
    payload.Block("GEOM", geometry);
}

} // namespace Sample
