#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace ZLMIM::Tools
{

/// UTF-8 with escapes (`\x1B`, `\u202E`) for control characters and those that change the writing direction.
[[nodiscard]] std::string Printable(std::u16string_view text);

/// A name from a file, printable and in quotation marks.
[[nodiscard]] std::string Quoted(std::u16string_view name);

/// A whole number with commas between thousands: 4,210.
[[nodiscard]] std::string Number(std::int64_t number);

/// A float for people: three decimals, or five digits if it is too large or small for that.
[[nodiscard]] std::string Decimal(float value);

/// The words that aren't empty, joined by blanks.
[[nodiscard]] std::string Words(std::initializer_list<std::string_view> words);

/// `text` broken between words into lines of at most `width` columns, all but the first indented by `indent`.
/// Line breaks in `text` stay.
[[nodiscard]] std::string Wrapped(std::string_view text, std::size_t width, std::size_t indent);

/// Columns that UTF-8 text takes on a terminal.
[[nodiscard]] std::size_t Width(std::string_view text);

/// The first `width` columns of a text, the last of them an ellipsis if it is longer.
[[nodiscard]] std::string Shortened(std::string_view text, std::size_t width);

/// A number of bytes for people: "812 bytes", "60 MB".
[[nodiscard]] std::string Bytes(std::uint64_t count);

/// A number of things: "1 bone", "12 bones".
[[nodiscard]] std::string Counted(std::int64_t count, std::string_view one, std::string_view many);

} // namespace ZLMIM::Tools
