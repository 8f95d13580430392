#ifndef ZLMIM_CONFIG_DISK_FOLDER_H
#define ZLMIM_CONFIG_DISK_FOLDER_H

#include "zlmim/config/file_system.h"
#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <string>
#include <vector>

namespace ZLMIM
{

/// A folder of the system, known by its absolute path.
/// \ingroup inside
class DiskFolder : public Folder
{
public:
    /// The folder that the system calls so, made absolute; none if there is no such folder.
    [[nodiscard]] static std::shared_ptr<DiskFolder> Open(std::shared_ptr<PathResolver> names,
                                                          const NativePath& nativePath);

    /// `nativePath` is absolute, without a trailing separator: for a root empty, or as `C:` or
    /// `\\server\share` on Windows.
    DiskFolder(std::shared_ptr<PathResolver> names, NativePath nativePath);

    /// The path as the constructor takes it.
    [[nodiscard]] const NativePath& SystemPath() const noexcept { return mNativePath; }

    [[nodiscard]] bool IsRootFolder() const override;
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override;
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override;
    [[nodiscard]] std::u16string Path() const override;

private:
    std::shared_ptr<PathResolver> mNames;
    NativePath mNativePath;
};

} // namespace ZLMIM

#endif
