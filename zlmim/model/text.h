#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// \addtogroup text
/// @{

/// The text in lower case, character by character. Converts A to Z, U+00C0 to U+00DE without U+00D7, and
/// U+0160, U+0152, U+017D and U+0178: the capitals in Windows-1252. All other characters stay.
[[nodiscard]] std::u16string LowerCase(std::u16string_view text);

/// The same in place.
void MakeLowerCase(std::u16string& text) noexcept;

/// The part of `text` without the blanks (U+0020) at both ends.
[[nodiscard]] std::u16string_view Trim(std::u16string_view text);

/// Decodes bytes as Windows-1252, one character per byte. A byte without a character there (81, 8D, 8F, 90,
/// 9D hexadecimal) becomes the character of its own number.
[[nodiscard]] std::u16string FromWindows1252(std::string_view bytes);

/// Decodes text of a mesh or animation file, one character per byte. Uses the ANSI code page of the system,
/// where there is one (Windows), otherwise Windows-1252. A byte that isn't a character by itself in that code
/// page is also decoded as Windows-1252.
[[nodiscard]] std::u16string FromAnsi(std::string_view bytes);

/// Converts UTF-8 to UTF-16; `std::nullopt` if the bytes aren't UTF-8.
[[nodiscard]] std::optional<std::u16string> FromUtf8(std::string_view utf8);

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::u16string_view text);

/// @}

} // namespace ZLMIM
