#ifndef ZLMIM_READER_WINDOWS_NAME_H
#define ZLMIM_READER_WINDOWS_NAME_H

#include <cstddef>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// The absolute form of a name: `C:\x` or `\\server\share\x`, with no `.` and `..` in it. Empty for what
/// can't name a file or a folder: an empty name, one with a zero inside, and the name of a device.
[[nodiscard]] std::u16string AbsoluteName(std::u16string_view name);

/// The same as the system's calls take it, whatever its length. Empty for a name that they aren't to be asked
/// for.
[[nodiscard]] std::wstring CallName(std::u16string_view name);

/// How much of an absolute name is its drive or share, without a backslash behind it.
[[nodiscard]] std::size_t RootLength(std::u16string_view absoluteName);

} // namespace ZLMIM

#endif
