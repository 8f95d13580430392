#pragma once

#include "zlmim/model/records.h"

#include <array>

namespace ZLMIM::Export
{

/// A matrix that glTF allows in a node: a rotation, a scale that isn't 0, and a position.
struct PlaceMatrix
{
    std::array<float, 16> Columns = {};
    bool IsIdentity = false;
    bool IsRepaired = false;
};

/// Rows 1 to 4 as columns. Axes that aren't at right angles are turned to that, the first one staying. An
/// axis without a length gets 1; one that isn't finite and a position that isn't finite are taken as 0.
[[nodiscard]] PlaceMatrix ToPlace(const Matrix& matrix);

} // namespace ZLMIM::Export
