#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// The absolute form of a name: `C:\x` or `\\server\share\x`, without `.` and `..`. Empty for an invalid
/// name: an empty name, a name with a zero inside, or the name of a device.
[[nodiscard]] std::u16string AbsoluteName(std::u16string_view name);

/// The same in the form that the system's calls take, for names of any length. Empty for a name that must not
/// be passed to them.
[[nodiscard]] std::wstring CallName(std::u16string_view name);

/// Length of an absolute name's drive or share, without the backslash after it.
[[nodiscard]] std::size_t RootLength(std::u16string_view absoluteName);

} // namespace ZLMIM
