#ifndef ZLMIM_CONFIG_LOD_NUMBER_H
#define ZLMIM_CONFIG_LOD_NUMBER_H

#include <string_view>

namespace ZLMIM
{

/// The number at the start of a text, used for the levels of a level-of-detail list: an optional sign,
/// digits, an optional "." with digits, an optional "e" with an optional sign and at least one digit. Ignores
/// all blanks and tabs, and any text after the number. Returns 0 if there is no number.
/// \ingroup inside
[[nodiscard]] double LodNumber(std::u16string_view text);

} // namespace ZLMIM

#endif
