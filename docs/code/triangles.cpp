#include "triangles.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ZLMIM::Guide
{

std::vector<Triangle> Triangles(const Geometry& geometry)
{
    const PrimFlag type = geometry.PrimitiveType;
    if (type != PrimFlag::TRIANGLES && type != PrimFlag::TRI_STRIP && type != PrimFlag::TRI_FAN)
        return {};
    const auto indices = geometry.Indices();
    const auto isVertex = [&](std::int32_t index) { return index >= 0 && index < geometry.MaxVertices(); };
    const std::size_t step = type == PrimFlag::TRIANGLES ? 3 : 1;
    std::vector<Triangle> triangles;
    for (std::size_t i = 0; i + 2 < indices.size(); i += step)
    {
        Triangle triangle = {indices[i], indices[i + 1], indices[i + 2]};
        if (type == PrimFlag::TRI_FAN)
            triangle[0] = indices[0];
        if (type == PrimFlag::TRI_STRIP && i % 2 == 1)
            std::swap(triangle[0], triangle[1]);
        if (std::all_of(triangle.begin(), triangle.end(), isVertex))
            triangles.push_back(triangle);
    }
    return triangles;
}

} // namespace ZLMIM::Guide
