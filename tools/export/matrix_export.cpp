#include "matrix_export.h"

#include "tools/common/poses.h"

#include <algorithm>
#include <cmath>
#include <glm/glm.hpp>
#include <glm/gtc/type_ptr.hpp>

namespace ZLMIM::Export
{
namespace
{

bool IsFinite(const glm::vec4& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

/// Whether the axes have a length that readers can compute with, and are at right angles.
bool IsPlace(const glm::mat4& matrix)
{
    constexpr double kShortest = 1e-6;
    constexpr double kLongest = 100;
    constexpr double kTolerance = 1e-5;
    for (int i = 0; i < 4; ++i)
        if (!IsFinite(matrix[i]))
            return false;
    const glm::dmat3 axes(matrix);
    for (int i = 0; i < 3; ++i)
    {
        const double length = glm::length(axes[i]);
        if (length < kShortest || length > kLongest)
            return false;
        const glm::dvec3& next = axes[(i + 1) % 3];
        if (std::abs(glm::dot(axes[i], next)) > kTolerance * length * glm::length(next))
            return false;
    }
    return true;
}

/// `axis` at a right angle to those that are given, which are so to one another and of unit length; any such
/// direction if it has none of its own.
template <class... Others>
glm::dvec3 Straightened(glm::dvec3 axis, const Others&... others)
{
    const auto rest = [&](glm::dvec3 v) { return ((v -= glm::dot(v, others) * others), ..., v); };
    constexpr double kLeast = 1e-3;
    if (glm::length(axis) > 0)
        axis = rest(glm::normalize(axis));
    for (int i = 0; i < 3 && glm::length(axis) < kLeast; ++i)
    {
        glm::dvec3 unit(0);
        unit[i] = 1;
        axis = rest(unit);
    }
    return glm::normalize(axis);
}

glm::mat4 Repaired(const glm::mat4& matrix)
{
    glm::dmat3 axes(0);
    for (int i = 0; i < 3; ++i)
        if (IsFinite(matrix[i]))
            axes[i] = glm::dvec3(matrix[i]);
    constexpr double kShortest = 1e-6;
    constexpr double kLongest = 100;
    glm::dvec3 lengths;
    for (int i = 0; i < 3; ++i)
    {
        const double length = glm::length(axes[i]);
        lengths[i] = length > 0 ? std::clamp(length, kShortest, kLongest) : 1;
    }
    const bool isMirrored = glm::determinant(axes) < 0;
    // An axis without a direction is taken as that of no rotation, if it is free.
    for (int i = 0; i < 3; ++i)
        if (glm::length(axes[i]) == 0)
            axes[i][i] = 1;
    const glm::dvec3 x = Straightened(axes[0]);
    const glm::dvec3 y = Straightened(axes[1], x);
    const glm::dvec3 z = glm::cross(x, y) * (isMirrored ? -1.0 : 1.0);
    glm::mat4 repaired(1);
    repaired[0] = glm::vec4(x * lengths.x, 0);
    repaired[1] = glm::vec4(y * lengths.y, 0);
    repaired[2] = glm::vec4(z * lengths.z, 0);
    if (IsFinite(matrix[3]))
        repaired[3] = glm::vec4(glm::vec3(matrix[3]), 1);
    return repaired;
}

} // namespace

PlaceMatrix ToPlace(const Matrix& source)
{
    glm::mat4 matrix = Tools::ToMat4(source);
    PlaceMatrix place;
    place.IsRepaired = !IsPlace(matrix);
    if (place.IsRepaired)
        matrix = Repaired(matrix);
    place.IsIdentity = matrix == glm::mat4(1);
    std::copy_n(glm::value_ptr(matrix), place.Columns.size(), place.Columns.begin());
    return place;
}

} // namespace ZLMIM::Export
