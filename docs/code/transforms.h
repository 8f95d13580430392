#pragma once

#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/records.h"

#include <memory>
#include <optional>

namespace ZLMIM::Guide
{

inline constexpr Matrix kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

/// The point, transformed by the matrix.
[[nodiscard]] Vector Transform(const Vector& point, const Matrix& matrix);

/// The matrix product: transforms by `first`, then by `second`.
[[nodiscard]] Matrix Multiply(const Matrix& first, const Matrix& second);

/// The inverse; `std::nullopt` if the matrix has none.
[[nodiscard]] std::optional<Matrix> Inverse(const Matrix& matrix);

/// Takes points of an entry's mesh to the space of the whole asset.
[[nodiscard]] Matrix EntryTransform(std::shared_ptr<const MeshEntry> entry);

} // namespace ZLMIM::Guide
