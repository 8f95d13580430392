#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <utility>

namespace ZLMIM
{

/// The system's own files and folders.
///
/// Letter case is ignored if no file has a path's exact name. Names in the folder of an opened text file are
/// searched in that folder only, not in others whose names differ in letter case. Only regular files exist:
/// anything else is opened without blocking, and closed unread. Text is decoded as Windows-1252. A line ends
/// at CR LF, LF, or CR alone; the last line needs no end.
///
/// A folder's path is absolute and spelt as on disk. The root's is empty; on Windows a drive's is `C:` and a
/// share's `\\server\share`. Subfolders are sorted by name in lower case, then by exact name. A folder that
/// the process has no permission to list has no subfolders.
/// \ingroup files
class DiskFileSystem final : public FileSystem
{
public:
    /// Lists folders anew in each call. A folder that it returns caches its own listings.
    DiskFileSystem() = default;
    /// `paths` caches listed folders, and may be shared.
    explicit DiskFileSystem(std::shared_ptr<PathResolver> paths) : mPaths(std::move(paths)) {}

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;

private:
    [[nodiscard]] std::shared_ptr<PathResolver> Paths() const;

    /// Null if nothing is cached.
    std::shared_ptr<PathResolver> mPaths;
};

} // namespace ZLMIM
