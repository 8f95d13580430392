#include "transforms.h"

namespace ZLMIM::Guide
{
namespace
{

Vector Cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

} // namespace

Vector Transform(const Vector& point, const Matrix& matrix)
{
    const auto& [x, y, z] = point;
    return {x * matrix.m11 + y * matrix.m21 + z * matrix.m31 + matrix.m41,
            x * matrix.m12 + y * matrix.m22 + z * matrix.m32 + matrix.m42,
            x * matrix.m13 + y * matrix.m23 + z * matrix.m33 + matrix.m43};
}

Matrix Multiply(const Matrix& first, const Matrix& second)
{
    Matrix rotation = second; // without the position
    rotation.m41 = rotation.m42 = rotation.m43 = 0;
    const Vector row1 = Transform({first.m11, first.m12, first.m13}, rotation);
    const Vector row2 = Transform({first.m21, first.m22, first.m23}, rotation);
    const Vector row3 = Transform({first.m31, first.m32, first.m33}, rotation);
    const Vector row4 = Transform({first.m41, first.m42, first.m43}, second);
    return {row1.x, row1.y, row1.z, row2.x, row2.y, row2.z, row3.x, row3.y, row3.z, row4.x, row4.y, row4.z};
}

std::optional<Matrix> Inverse(const Matrix& m)
{
    const Vector row1 = {m.m11, m.m12, m.m13};
    const Vector row2 = {m.m21, m.m22, m.m23};
    const Vector row3 = {m.m31, m.m32, m.m33};
    // The columns of the inverse, times the determinant.
    const Vector a = Cross(row2, row3);
    const Vector b = Cross(row3, row1);
    const Vector c = Cross(row1, row2);
    const float d = row1.x * a.x + row1.y * a.y + row1.z * a.z;
    if (d == 0)
        return std::nullopt;
    Matrix inverse = {a.x / d, b.x / d, c.x / d, a.y / d, b.y / d, c.y / d, a.z / d, b.z / d, c.z / d};
    const Vector position = Transform({m.m41, m.m42, m.m43}, inverse);
    inverse.m41 = -position.x;
    inverse.m42 = -position.y;
    inverse.m43 = -position.z;
    return inverse;
}

Matrix EntryTransform(std::shared_ptr<const MeshEntry> entry)
{
    Matrix transform = kIdentity;
    while (entry->Att)
    {
        const std::shared_ptr<const MeshEntry> parent = entry->AttParent();
        if (!parent || parent == entry)
            break;
        transform = Multiply(transform, entry->Att->Matrix);
        entry = parent;
    }
    return transform;
}

} // namespace ZLMIM::Guide
