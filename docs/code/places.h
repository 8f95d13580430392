#ifndef ZLMIM_DOCS_CODE_PLACES_H
#define ZLMIM_DOCS_CODE_PLACES_H

#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/records.h"

#include <memory>

namespace ZLMIM::Guide
{

inline constexpr Matrix kUnmoved = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

/// The point where the matrix puts it.
[[nodiscard]] Vector Place(const Vector& point, const Matrix& matrix);

/// The matrix that does what `first` does, and then what `second` does.
[[nodiscard]] Matrix Then(const Matrix& first, const Matrix& second);

/// Where the entry's mesh stands in its asset.
[[nodiscard]] Matrix PlaceOf(std::shared_ptr<const MeshEntry> entry);

} // namespace ZLMIM::Guide

#endif
