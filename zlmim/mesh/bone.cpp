#include "zlmim/mesh/bone.h"

#include <cfloat>

namespace ZLMIM
{

// The x87 unit wouldn't round the products of `ToMatrix`, and changes signalling NaNs.
static_assert(FLT_EVAL_METHOD == 0, "build for 32-bit x86 with -msse2 -mfpmath=sse");

Matrix Bone::ToMatrix() const
{
    const double x = Rotation.x;
    const double y = Rotation.y;
    const double z = Rotation.z;
    const double w = Rotation.w;

    // Six of the nine products are rounded to 32 bits, the other three are added at full precision.
    const double xz = static_cast<float>(x * z);
    const double xw = static_cast<float>(x * w);
    const double yy = static_cast<float>(y * y);
    const double yz = static_cast<float>(y * z);
    const double yw = static_cast<float>(y * w);
    const double zz = static_cast<float>(z * z);
    const double xx = x * x;
    const double xy = x * y;
    const double zw = z * w;

    const auto rounded = [](double element) { return static_cast<float>(element); };
    return {
        .m11 = rounded(1 - 2 * (yy + zz)),
        .m12 = rounded(2 * (xy - zw)),
        .m13 = rounded(2 * (xz + yw)),
        .m21 = rounded(2 * (xy + zw)),
        .m22 = rounded(1 - 2 * (xx + zz)),
        .m23 = rounded(2 * (yz - xw)),
        .m31 = rounded(2 * (xz - yw)),
        .m32 = rounded(2 * (yz + xw)),
        .m33 = rounded(1 - 2 * (xx + yy)),
        .m41 = Position.x,
        .m42 = Position.y,
        .m43 = Position.z,
    };
}

} // namespace ZLMIM
