#ifndef ZLMIM_READER_SYSTEM_NAME_H
#define ZLMIM_READER_SYSTEM_NAME_H

#include <optional>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// \addtogroup files
/// @{

#ifdef _WIN32
using SystemName = std::u16string;
inline constexpr SystemName::value_type kSystemSeparator = u'\\';
#else
/// The name of a file or folder as this system's calls take it: 16-bit characters on Windows, bytes
/// elsewhere.
using SystemName = std::string;
/// What stands between the parts of such a name: a backslash on Windows, a slash elsewhere.
inline constexpr SystemName::value_type kSystemSeparator = '/';
#endif

/// A part of such a name.
using SystemNameView = std::basic_string_view<SystemName::value_type>;

/// The system's form of a name in the object model's.
[[nodiscard]] SystemName ToSystemName(std::u16string_view name);

/// The same; empty for a name that the system can't be asked for.
[[nodiscard]] SystemName ExactSystemName(std::u16string_view name);

/// Whether a name in the object model's form doesn't count from a folder.
[[nodiscard]] bool IsAbsoluteName(std::u16string_view name);
/// The absolute path of an existing folder, its names spelt as on disk, without a separator at its end: a
/// root's is empty, or `C:` or `\\server\share` on Windows. `std::nullopt` if the folder can't be found.
[[nodiscard]] std::optional<SystemName> AbsoluteFolder(const SystemName& folder);

/// Whether an absolute path is a root's.
[[nodiscard]] bool IsRoot(SystemNameView absoluteFolder);

/// The text of a path that the system gave, with backslashes.
[[nodiscard]] std::u16string FromSystemPath(SystemNameView systemPath);

/// The text of a name in bytes: from UTF-8 if it is that, else through Windows-1252.
[[nodiscard]] std::u16string FromSystemName(std::string_view systemName);

/// @}

} // namespace ZLMIM

#endif
