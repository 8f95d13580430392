#ifndef ZLMIM_CONFIG_DISK_FILE_SYSTEM_H
#define ZLMIM_CONFIG_DISK_FILE_SYSTEM_H

#include "zlmim/config/file_system.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>

namespace ZLMIM
{

/// The system's own files and folders.
///
/// Letter case is ignored where no file has a path's exact name. What isn't a regular file doesn't exist: it
/// is opened without blocking, and closed unread. Bytes of text become characters through Windows-1252. A
/// line ends at CR LF, LF, or CR alone; the last one needs no end.
///
/// A folder's path is absolute, its paths spelt as on disk. The root's is empty text; on Windows a drive's is
/// `C:` and a share's `\\server\share`. Subfolders are sorted by name in lower case, then by exact name. A
/// folder without the right to list it has no subfolders. \ingroup files
class DiskFileSystem final : public FileSystem
{
public:
    /// Lists folders anew for each call. A folder that it returned remembers what it lists.
    DiskFileSystem() = default;
    /// `paths` remembers the folders that have been listed, and may be shared.
    explicit DiskFileSystem(std::shared_ptr<PathResolver> paths);

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;

private:
    [[nodiscard]] std::shared_ptr<PathResolver> Paths() const;

    /// Null where nothing is to be remembered.
    std::shared_ptr<PathResolver> mPaths;
};

} // namespace ZLMIM

#endif
