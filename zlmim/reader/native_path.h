#ifndef ZLMIM_READER_NATIVE_PATH_H
#define ZLMIM_READER_NATIVE_PATH_H

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
/// What stands between the parts of such a name: a backslash on Windows, a slash elsewhere.
inline constexpr NativePath::value_type kNativeSeparator = '/';
#endif

/// A part of such a name.
using NativePathView = std::basic_string_view<NativePath::value_type>;

/// The system's form of a name in the object model's.
[[nodiscard]] NativePath ToNativePath(std::u16string_view name);

/// The same; empty for a name that the system can't be asked for.
[[nodiscard]] NativePath ExactNativePath(std::u16string_view name);

/// Whether a name in the object model's form doesn't count from a folder.
[[nodiscard]] bool IsAbsoluteName(std::u16string_view name);
/// The absolute path of an existing folder, its names spelt as on disk, without a separator at its end: a
/// root's is empty, or `C:` or `\\server\share` on Windows. `std::nullopt` if the folder can't be found.
[[nodiscard]] std::optional<NativePath> AbsoluteFolder(const NativePath& folder);

/// Whether an absolute path is a root's.
[[nodiscard]] bool IsRoot(NativePathView absoluteFolder);

/// The text of a path that the system gave, with backslashes.
[[nodiscard]] std::u16string FromNativePath(NativePathView nativePath);

/// The text of a name in bytes: from UTF-8 if it is that, else through Windows-1252.
[[nodiscard]] std::u16string FromNativeName(std::string_view nativePath);

/// @}

} // namespace ZLMIM

#endif
