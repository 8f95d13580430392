#pragma once

#include "zlmim/reader/native_path.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace ZLMIM::Tools
{

/// A path for people: the system's separators, without detours such as `a/../`, and relative to the working
/// folder if it lies below that.
[[nodiscard]] std::u16string ShownName(const NativePath& nativePath);

/// The same for a name in the object model's form (backslashes), as printable UTF-8.
[[nodiscard]] std::string ShownFile(std::u16string_view name);

[[nodiscard]] std::filesystem::path ToPath(NativePathView nativePath);
/// A path of UTF-8 text, such as an argument, and its text.
[[nodiscard]] std::filesystem::path FromUtf8Path(const std::string& utf8);
[[nodiscard]] std::string ToUtf8Path(const std::filesystem::path& path);
/// A path in the object model's form.
[[nodiscard]] std::u16string ToName(const std::filesystem::path& path);

/// The folder part of a name in the object model's form, with its backslash; `.\` for a name without one.
[[nodiscard]] std::u16string FolderOf(std::u16string_view name);

/// What follows the last backslash.
[[nodiscard]] std::u16string_view BaseName(std::u16string_view name);

} // namespace ZLMIM::Tools
