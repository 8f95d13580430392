#ifndef ZLMIM_READER_PATH_RESOLVER_H
#define ZLMIM_READER_PATH_RESOLVER_H

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

/// What stands under a name.
/// \ingroup files
struct FoundFile
{
    /// What can stand under a name. Links are followed.
    enum class Kind
    {
        File,   ///< A regular file.
        Folder, ///< A folder.
        Other,  ///< A pipe or a device, say.
    };

    /// The name that leads there, as this system's calls take it.
    NativePath nativePath;
    /// What it is.
    Kind kind = Kind::Other;
    /// The same for all names of one file or folder, and for no other.
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
    /// Whether the name's text leads back to it: it is UTF-8, and has no backslash.
    bool isText = true;
};

/// What names in the object model's form (UTF-16, backslashes) are called by this system. The one place where
/// the two meet.
///
/// The exact name comes first. If nothing bears it, letter case is ignored: part by part, the entries of a
/// folder that equal the part in lower case, in the order of their bytes, until one leads to the end of the
/// name. An entry is compared as UTF-8 and as Windows-1252, since text that was saved as UTF-8 may have been
/// read one character a byte. A name of more than 64 parts is found by its exact letters only.
///
/// Windows ignores letter case by itself, and there all of that is left to it. Names of devices (NUL,
/// `\\.\pipe\x`) lead to nothing there.
///
/// Folders are listed once for all names that one object is asked for, so it is meant to live as long as one
/// load, or a few of them in a row: what has changed on the disk meanwhile may go unseen.
/// \ingroup files
class PathResolver
{
public:
    PathResolver() = default;
    PathResolver(const PathResolver&) = delete;
    PathResolver& operator=(const PathResolver&) = delete;
    ~PathResolver() = default;

    /// What `name` leads to, if it is of that kind: what is of another kind is passed over like another name.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] std::optional<FoundFile> Find(std::u16string_view name, FoundFile::Kind kind);

    /// The entries of a folder, by its name in the system's form with a separator at its end (empty for the
    /// working folder): sorted by name in lower case, then by the system's name; empty if it can't be listed.
    /// Valid until the next call of any member.
    /// @throws FileSystemError 57 if the system is out of file descriptors or memory.
    [[nodiscard]] std::span<const FolderEntry> List(NativePath nativeFolder);

    /// Forgets all folders, which are listed anew when they are needed.
    void Forget();

private:
    /// Makes room for `size` more bytes.
    void Remember(std::size_t size);
    /// In any order.
    [[nodiscard]] static std::optional<std::vector<FolderEntry>> ReadListing(const NativePath& folder);
    // Only where the system doesn't ignore letter case by itself.
    [[nodiscard]] std::vector<NativePath> Matching(const NativePath& folder, std::u16string_view part);
    [[nodiscard]] std::vector<NativePath> Folders(const std::u16string& name);

    std::unordered_map<NativePath, std::vector<FolderEntry>> mListings;
    std::unordered_map<std::u16string, std::vector<NativePath>> mFolders;
    std::size_t mRemembered = 0;
};

} // namespace ZLMIM

#endif
