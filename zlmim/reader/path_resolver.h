#pragma once

#include "zlmim/reader/native_path.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZLMIM
{

/// A file, a folder or something else that was found by name.
/// \ingroup files
struct FoundFile
{
    /// Kinds of things found. Links are followed.
    enum class Kind
    {
        File,   ///< A regular file.
        Folder, ///< A folder.
        Other,  ///< For example a pipe or a device.
    };

    /// The name under which it was found, as this system's calls take it.
    NativePath nativePath;
    /// Its kind.
    Kind kind = Kind::Other;
    /// Equal for all names of one file or folder, and different for others.
    std::pair<std::uint64_t, std::uint64_t> identity;
};

/// An entry of a folder.
/// \ingroup files
struct FolderEntry
{
    /// Its name in lower case.
    std::u16string lowerName;
    /// Its name, without the folder, as this system's calls take it.
    NativePath nativePath;
    /// Whether it is a folder, or a link to one.
    bool isFolder = false;
    /// Second entry for a non-ASCII name, decoded as Windows-1252.
    bool isWindows1252 = false;
    /// Whether the name's text converts back to the same name: it is valid UTF-8, and has no backslash.
    bool isText = true;
};

/// Maps names in the object model's form (UTF-16, backslashes) to names of this system. No other class does.
///
/// Tries the exact name first. If it doesn't exist, letter case is ignored: for each part of the name, tries
/// the folder's entries that equal the part in lower case, in byte order, until one leads to the end of the
/// name. Entries are compared both as UTF-8 and as Windows-1252, since text that was saved as UTF-8 may have
/// been read as one character per byte. A name of more than 64 parts is found by its exact letters only.
///
/// Windows itself ignores letter case, so there the system does all of that. Names of devices (NUL,
/// `\\.\pipe\x`) find nothing there.
///
/// An object caches the folders that it lists. So it should live for one load, or for a few loads in a row:
/// later changes on the disk may go unnoticed.
/// \ingroup files
class PathResolver
{
public:
    PathResolver() = default;
    PathResolver(const PathResolver&) = delete;
    PathResolver& operator=(const PathResolver&) = delete;

    /// Finds `name`, if it is of that kind. Skips things of another kind like other names.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] std::optional<FoundFile> Find(std::u16string_view name, FoundFile::Kind kind);

    /// Records that the file `name` was found at `nativePath`. From then on, names in its folder are searched
    /// in that folder only, and not in folders whose names differ in letter case. Looking for those would
    /// list each folder of the path, among them the one that contains all assets.
    void PinFolderOf(std::u16string_view name, NativePathView nativePath);

    /// The entries of a folder. `nativeFolder` is its name in the system's form with a trailing separator, or
    /// empty for the working folder. Sorted by name in lower case, then by the system's name. Empty if the
    /// folder can't be listed. Valid until the next call of any member.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] std::span<const FolderEntry> List(NativePath nativeFolder);

    /// Clears the cache. Folders are listed again when they are needed.
    void Forget();

private:
    void ForgetListings();
    /// Makes room in the cache of listings for `size` more bytes.
    void Remember(std::size_t size);
    /// Reads a folder's entries, unsorted.
    [[nodiscard]] static std::optional<std::vector<FolderEntry>> ReadListing(const NativePath& folder);
    // Used only where the system itself doesn't ignore letter case.
    [[nodiscard]] std::vector<NativePath> Matching(const NativePath& folder, std::u16string_view part);
    [[nodiscard]] std::vector<NativePath> Folders(const std::u16string& name);

    std::unordered_map<NativePath, std::vector<FolderEntry>> mListings;
    std::unordered_map<std::u16string, std::vector<NativePath>> mFolders;
    /// Keyed by name in lower case, with slashes. Empty if two folders have that name.
    std::unordered_map<std::u16string, NativePath> mPinnedFolders;
    std::size_t mRemembered = 0;
};

} // namespace ZLMIM
