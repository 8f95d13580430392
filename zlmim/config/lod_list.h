#pragma once

#include "zlmim/config/line_reader.h"

#include <string>
#include <string_view>

namespace ZLMIM
{

/// The mesh of level 1 in a level-of-detail list: the name in the first name line after the first level line
/// of level 1. Empty if there is no such line.
/// \ingroup inside
[[nodiscard]] std::u16string Level1Mesh(LineReader& lines);

/// The number at the start of a level: an optional sign, digits, an optional "." with digits, an optional "e"
/// with an optional sign and at least one digit. Ignores all blanks and tabs, and any text after the number.
/// Returns 0 if there is no number.
/// \ingroup inside
[[nodiscard]] double LodNumber(std::u16string_view text);

} // namespace ZLMIM
