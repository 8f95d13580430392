#ifndef ZLMIM_MODEL_RECORDS_H
#define ZLMIM_MODEL_RECORDS_H

#include <bit>
#include <type_traits>

namespace ZLMIM
{

/// The records of the object model. Each is the same sequence of bytes in a file and in memory: its fields in
/// declared order, little-endian, without gaps. Values are stored as they come from a file; nothing is
/// normalised, clamped or validated. A property that holds a record copies it whole.

/// Three coordinates. 12 bytes.
struct Vector
{
    float x = 0, y = 0, z = 0;
    bool operator==(const Vector&) const = default;
};

/// A rotation; `w` is the scalar component, and the last field. 16 bytes.
struct Quaternion
{
    float x = 0, y = 0, z = 0, w = 0;
    bool operator==(const Quaternion&) const = default;
};

/// One point of a mesh (`x`, `y`, `z`) with its texture coordinate (`u`, `v`). 20 bytes.
struct Vertex
{
    float x = 0, y = 0, z = 0;
    float u = 0, v = 0;
    bool operator==(const Vertex&) const = default;
};

/// Four rows of three. Rows 1 to 3 hold the rotation, row 4 the position: a point p is placed by
/// p.x * row 1 + p.y * row 2 + p.z * row 3 + row 4. 48 bytes.
struct Matrix
{
    float m11 = 0, m12 = 0, m13 = 0;
    float m21 = 0, m22 = 0, m23 = 0;
    float m31 = 0, m32 = 0, m33 = 0;
    float m41 = 0, m42 = 0, m43 = 0;
    bool operator==(const Matrix&) const = default;
};

/// The pose of one bone in one frame: position `p`, rotation `q`. 28 bytes.
struct Keyframe
{
    Vector p;
    Quaternion q;
    bool operator==(const Keyframe&) const = default;
};

/// A colour. Components usually lie in 0 to 1, but any value comes through unchanged. 12 bytes.
struct rgbColour
{
    float r = 0, g = 0, b = 0;
    bool operator==(const rgbColour&) const = default;
};

/// True for types that a file's bytes can be copied into as they stand.
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

#endif
