#ifndef VALIDATE_LOCATED_FILE_H
#define VALIDATE_LOCATED_FILE_H

#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace ZLMIM::Validate
{

/// Tells files apart, by whatever names they are reached. The folder counts: a file that stands in two
/// folders, by links, has other files beside it in each.
struct FileKey
{
    std::pair<std::uint64_t, std::uint64_t> File;
    std::pair<std::uint64_t, std::uint64_t> Folder;

    [[nodiscard]] bool operator<(const FileKey& other) const
    {
        return std::tie(File, Folder) < std::tie(other.File, other.Folder);
    }
};

/// A regular file that stands under a name.
struct LocatedFile
{
    FileKey Key;
    /// Its name as the system calls it.
    NativePath Name;

    /// Its folder, with a separator behind it; empty for the working folder.
    [[nodiscard]] NativePath Folder() const { return Name.substr(0, Name.rfind(kNativeSeparator) + 1); }
};

/// The file under a name in the object model's form; none if there is none.
[[nodiscard]] std::optional<LocatedFile> Locate(std::u16string_view name, PathResolver& names);

/// A name as the system's users write it, without detours, and relative to the working folder where it lies
/// below that.
[[nodiscard]] std::u16string ShownName(const NativePath& nativePath);

/// The name to show for one in the object model's form, in a message.
[[nodiscard]] std::string QuotedFile(std::u16string_view name);

/// A path, and a name in the object model's form, from one another.
[[nodiscard]] std::filesystem::path ToPath(NativePathView nativePath);
[[nodiscard]] std::u16string ToName(const std::filesystem::path& path);

/// The folder part of a name in the object model's form, with its backslash; `.\` for a name without one.
[[nodiscard]] std::u16string FolderOf(std::u16string_view name);

} // namespace ZLMIM::Validate

#endif
