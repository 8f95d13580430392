#ifndef ZLMIM_MODEL_TEXT_H
#define ZLMIM_MODEL_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// \addtogroup text
/// @{

/// The text in lower case, character by character: A to Z, U+00C0 to U+00DE without U+00D7, and U+0160,
/// U+0152, U+017D and U+0178, which are the capitals that Windows-1252 has. All else stays.
[[nodiscard]] std::u16string LowerCase(std::u16string_view text);

/// The same in place.
void MakeLowerCase(std::u16string& text) noexcept;

/// One character for each byte, by Windows-1252. A byte that has no character there (81, 8D, 8F, 90, 9D
/// hexadecimal) becomes the character of its own number.
[[nodiscard]] std::u16string FromWindows1252(std::string_view bytes);

/// The text that the bytes of a mesh or animation file stand for, one character for each byte: by the ANSI
/// code page of the system, where it has one (Windows), else by Windows-1252. This also stands in for a byte
/// that has no character by itself there.
[[nodiscard]] std::u16string FromAnsi(std::string_view bytes);

/// UTF-16 from UTF-8; none if the bytes aren't UTF-8.
[[nodiscard]] std::optional<std::u16string> FromUtf8(std::string_view utf8);

/// UTF-8 from UTF-16. Half of a surrogate pair without the other becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::u16string_view text);

/// @}

} // namespace ZLMIM

#endif
