#pragma once

#include <bit>
#include <type_traits>

namespace ZLMIM
{

/// \addtogroup records
/// @{

/// Three coordinates. 12 bytes.
struct Vector
{
    float x = 0; ///< First coordinate.
    float y = 0; ///< Second coordinate.
    float z = 0; ///< Third coordinate.
    bool operator==(const Vector&) const = default;
};

/// A rotation. `w` is the last field, also in files. Need not be of unit length. All zero when new. 16 bytes.
struct Quaternion
{
    float x = 0; ///< First component of the vector.
    float y = 0; ///< Second component of the vector.
    float z = 0; ///< Third component of the vector.
    float w = 0; ///< The scalar component.
    bool operator==(const Quaternion&) const = default;
};

/// One point of a mesh with its texture coordinate. 20 bytes.
struct Vertex
{
    float x = 0; ///< First coordinate of the position.
    float y = 0; ///< Second coordinate of the position.
    float z = 0; ///< Third coordinate of the position.
    float u = 0; ///< First texture coordinate.
    float v = 0; ///< Second texture coordinate.
    bool operator==(const Vertex&) const = default;
};

/// Four rows of three. Rows 1 to 3 hold the rotation, row 4 the position: a point p is placed by
/// p.x * row 1 + p.y * row 2 + p.z * row 3 + row 4. 48 bytes.
struct Matrix
{
    float m11 = 0; ///< Row 1, column 1.
    float m12 = 0; ///< Row 1, column 2.
    float m13 = 0; ///< Row 1, column 3.
    float m21 = 0; ///< Row 2, column 1.
    float m22 = 0; ///< Row 2, column 2.
    float m23 = 0; ///< Row 2, column 3.
    float m31 = 0; ///< Row 3, column 1.
    float m32 = 0; ///< Row 3, column 2.
    float m33 = 0; ///< Row 3, column 3.
    float m41 = 0; ///< x of the position.
    float m42 = 0; ///< y of the position.
    float m43 = 0; ///< z of the position.
    bool operator==(const Matrix&) const = default;
};

/// The pose of one bone in one frame. 28 bytes.
struct Keyframe
{
    Vector p;     ///< Position.
    Quaternion q; ///< Rotation.
    bool operator==(const Keyframe&) const = default;
};

/// A colour without an alpha component. Components are usually 0 to 1, but any value is kept. 12 bytes.
struct rgbColour
{
    float r = 0; ///< Red.
    float g = 0; ///< Green.
    float b = 0; ///< Blue.
    bool operator==(const rgbColour&) const = default;
};

/// @}

/// True for types that a file's bytes can be copied into unchanged.
/// \ingroup inside
template <class T>
inline constexpr bool kIsRecord = std::is_trivially_copyable_v<T>&& std::is_standard_layout_v<T>;

static_assert(std::endian::native == std::endian::little, "records are copied from little-endian files");
static_assert(sizeof(Vector) == 12 && kIsRecord<Vector>);
static_assert(sizeof(Quaternion) == 16 && kIsRecord<Quaternion>);
static_assert(sizeof(Vertex) == 20 && kIsRecord<Vertex>);
static_assert(sizeof(Matrix) == 48 && kIsRecord<Matrix>);
static_assert(sizeof(Keyframe) == 28 && kIsRecord<Keyframe>);
static_assert(sizeof(rgbColour) == 12 && kIsRecord<rgbColour>);

} // namespace ZLMIM
