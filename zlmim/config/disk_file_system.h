#ifndef ZLMIM_CONFIG_DISK_FILE_SYSTEM_H
#define ZLMIM_CONFIG_DISK_FILE_SYSTEM_H

#include "zlmim/config/file_system.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>

namespace ZLMIM
{

/// The system's own files and folders.
///
/// Letter case is ignored where nothing bears a path's exact name. What isn't a regular file doesn't exist.
/// Bytes of text become characters through Windows-1252. A line ends at CR LF, LF, or CR alone; the last one
/// needs no end.
///
/// A folder's path is absolute, its paths spelt as on disk. The root's is empty text; on Windows a drive's is
/// `C:` and a share's `\\server\share`. Its subfolders come sorted by name in lower case, then by exact name;
/// a folder that can't be listed has none. \ingroup files
class DiskFileSystem final : public FileSystem
{
public:
    /// Asks the system anew each time. A folder that it has given remembers what it lists.
    DiskFileSystem() = default;
    /// `paths` remembers the folders that have been listed, also by others that share it.
    explicit DiskFileSystem(std::shared_ptr<PathResolver> paths);

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenIfExists(const Folder& folder,
                                                           std::u16string_view name) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;

private:
    [[nodiscard]] std::shared_ptr<PathResolver> Paths() const;

    /// None where nothing is to be remembered.
    std::shared_ptr<PathResolver> mPaths;
};

} // namespace ZLMIM

#endif
