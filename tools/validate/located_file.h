#pragma once

#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace ZLMIM::Validate
{

/// Identifies a file, whatever name it is reached by. A file that is linked into two folders counts twice,
/// since each folder has other files beside it.
struct FileKey
{
    std::pair<std::uint64_t, std::uint64_t> File;
    std::pair<std::uint64_t, std::uint64_t> Folder;

    [[nodiscard]] bool operator<(const FileKey& other) const
    {
        return std::tie(File, Folder) < std::tie(other.File, other.Folder);
    }
};

/// An existing regular file.
struct LocatedFile
{
    FileKey Key;
    /// Its name in the system's form.
    NativePath Name;

    /// Its folder, with a separator at its end; empty for the working folder.
    [[nodiscard]] NativePath Folder() const { return Name.substr(0, Name.rfind(kNativeSeparator) + 1); }
};

/// The file with a name in the object model's form, if there is one.
[[nodiscard]] std::optional<LocatedFile> Locate(std::u16string_view name, PathResolver& names);

/// The name to show in a message for one in the object model's form.
[[nodiscard]] std::string QuotedFile(std::u16string_view name);

} // namespace ZLMIM::Validate
