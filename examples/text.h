#ifndef ZLMIM_EXAMPLES_TEXT_H
#define ZLMIM_EXAMPLES_TEXT_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace ZLMIM::Examples
{

/// UTF-8 with an escape (`\x1B`, `\u202E`) for each character that would steer a terminal instead of being
/// shown.
[[nodiscard]] std::string Printable(std::u16string_view text);

/// A whole number with its thousands apart: 4,210.
[[nodiscard]] std::string Number(std::int64_t number);

/// A float to read, not to copy: three decimals, or five digits for what is too great or small for that.
[[nodiscard]] std::string Decimal(float value);

/// The words with one blank between them.
[[nodiscard]] std::string Words(std::initializer_list<std::string_view> words);

/// A number of things: "1 bone", "12 bones".
[[nodiscard]] std::string Counted(std::int64_t count, std::string_view one, std::string_view many);

} // namespace ZLMIM::Examples

#endif
