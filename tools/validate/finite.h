#pragma once

#include "zlmim/model/records.h"

namespace ZLMIM::Validate
{

/// False for infinite numbers and NaN, whose product with 0 isn't 0.
template <class... Floats>
[[nodiscard]] bool AreFinite(Floats... numbers) noexcept
{
    return ((numbers * 0) + ...) == 0;
}

[[nodiscard]] inline bool AreFinite(const Vector& v) noexcept { return AreFinite(v.x, v.y, v.z); }
[[nodiscard]] inline bool AreFinite(const Quaternion& q) noexcept { return AreFinite(q.x, q.y, q.z, q.w); }
[[nodiscard]] inline bool AreFinite(const Vertex& v) noexcept { return AreFinite(v.x, v.y, v.z, v.u, v.v); }
[[nodiscard]] inline bool AreFinite(const rgbColour& c) noexcept { return AreFinite(c.r, c.g, c.b); }
[[nodiscard]] inline bool AreFinite(const Keyframe& k) noexcept { return AreFinite(k.p) && AreFinite(k.q); }
[[nodiscard]] inline bool AreFinite(const Matrix& m) noexcept
{
    return AreFinite(m.m11, m.m12, m.m13, m.m21, m.m22, m.m23, m.m31, m.m32, m.m33, m.m41, m.m42, m.m43);
}

} // namespace ZLMIM::Validate
