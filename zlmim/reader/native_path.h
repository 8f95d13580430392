#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// \addtogroup files
/// @{

#ifdef _WIN32
using NativePath = std::u16string;
inline constexpr NativePath::value_type kNativeSeparator = u'\\';
#else
/// The name of a file or folder as this system's calls take it: 16-bit characters on Windows, bytes
/// elsewhere.
using NativePath = std::string;
/// Separator of such a name: a backslash on Windows, a slash elsewhere.
inline constexpr NativePath::value_type kNativeSeparator = '/';
#endif

/// A part of such a name.
using NativePathView = std::basic_string_view<NativePath::value_type>;

/// Converts a name in the object model's form to the system's form.
[[nodiscard]] NativePath ToNativePath(std::u16string_view name);

/// The same; empty for a name that can't be passed to the system.
[[nodiscard]] NativePath ExactNativePath(std::u16string_view name);

/// Whether a name in the object model's form starts with a separator or, on Windows, with a drive.
[[nodiscard]] bool IsAbsoluteName(std::u16string_view name);
/// The absolute path of an existing folder, spelt as on disk, without a trailing separator. A root's is
/// empty, or `C:` or `\\server\share` on Windows. `std::nullopt` if the folder can't be found.
[[nodiscard]] std::optional<NativePath> AbsoluteFolder(const NativePath& folder);

/// Whether an absolute path is that of a root folder.
[[nodiscard]] bool IsRoot(NativePathView absoluteFolder);

/// Converts a path from the system to the object model's form, with backslashes.
[[nodiscard]] std::u16string FromNativePath(NativePathView nativePath);

/// Decodes a name in bytes: as UTF-8 if it is valid, otherwise as Windows-1252.
[[nodiscard]] std::u16string FromNativeName(std::string_view nativePath);

/// @}

} // namespace ZLMIM
