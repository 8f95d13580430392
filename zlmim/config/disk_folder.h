#ifndef ZLMIM_CONFIG_DISK_FOLDER_H
#define ZLMIM_CONFIG_DISK_FOLDER_H

#include "zlmim/config/file_system.h"
#include "zlmim/reader/file_names.h"
#include "zlmim/reader/system_name.h"

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
    [[nodiscard]] static std::shared_ptr<DiskFolder> Open(std::shared_ptr<FileNames> names,
                                                          const SystemName& systemName);

    /// `systemPath` is absolute, without a trailing separator: for a root empty, or as `C:` or
    /// `\\server\share` on Windows.
    DiskFolder(std::shared_ptr<FileNames> names, SystemName systemPath);

    /// The path as the constructor takes it.
    [[nodiscard]] const SystemName& SystemPath() const noexcept { return mSystemPath; }

    [[nodiscard]] bool IsRootFolder() const override;
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override;
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override;
    [[nodiscard]] std::u16string Path() const override;

private:
    std::shared_ptr<FileNames> mNames;
    SystemName mSystemPath;
};

} // namespace ZLMIM

#endif
