#ifndef ZLMIM_CONFIG_LOD_NUMBER_H
#define ZLMIM_CONFIG_LOD_NUMBER_H

#include <string_view>

namespace ZLMIM
{

/// The number at the start of a text, for the levels of a level-of-detail list: an optional sign, digits, an
/// optional "." with digits, an optional "e" with an optional sign and at least one digit. Blanks and tabs
/// are dropped wherever they stand, and what stands behind the number is ignored; 0 without a number.
/// \ingroup inside
[[nodiscard]] double LodNumber(std::u16string_view text);

} // namespace ZLMIM

#endif
