#include "places.h"

#include <utility>

namespace ZLMIM::Guide
{

Vector Place(const Vector& point, const Matrix& matrix)
{
    const auto& [x, y, z] = point;
    return {x * matrix.m11 + y * matrix.m21 + z * matrix.m31 + matrix.m41,
            x * matrix.m12 + y * matrix.m22 + z * matrix.m32 + matrix.m42,
            x * matrix.m13 + y * matrix.m23 + z * matrix.m33 + matrix.m43};
}

Matrix Then(const Matrix& first, const Matrix& second)
{
    Matrix turn = second; // turns as `second` does, and moves nothing
    turn.m41 = turn.m42 = turn.m43 = 0;
    const Vector row1 = Place({first.m11, first.m12, first.m13}, turn);
    const Vector row2 = Place({first.m21, first.m22, first.m23}, turn);
    const Vector row3 = Place({first.m31, first.m32, first.m33}, turn);
    const Vector row4 = Place({first.m41, first.m42, first.m43}, second);
    return {row1.x, row1.y, row1.z, row2.x, row2.y, row2.z, row3.x, row3.y, row3.z, row4.x, row4.y, row4.z};
}

Matrix PlaceOf(std::shared_ptr<const MeshEntry> entry)
{
    Matrix place = kUnmoved;
    while (entry->Att)
    {
        const std::shared_ptr<const MeshEntry> parent = entry->AttParent();
        if (!parent || parent == entry)
            break;
        place = Then(place, entry->Att->Matrix);
        entry = parent;
    }
    return place;
}

} // namespace ZLMIM::Guide
