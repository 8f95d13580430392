#include "zlmim/config/disk_folder.h"

#include <utility>

namespace ZLMIM
{

DiskFolder::DiskFolder(std::shared_ptr<FileNames> names, SystemName systemPath)
    : mNames(std::move(names)), mSystemPath(std::move(systemPath))
{
}

std::shared_ptr<Folder> DiskFolder::ParentFolder() const
{
    return std::make_shared<DiskFolder>(mNames, mSystemPath.substr(0, mSystemPath.rfind(kSystemSeparator)));
}

std::vector<std::shared_ptr<Folder>> DiskFolder::SubFolders() const
{
    std::vector<std::shared_ptr<Folder>> folders;
    for (const FolderEntry& entry : mNames->List(mSystemPath + kSystemSeparator))
    {
        if (entry.isFolder && !entry.isOtherReading)
            folders.push_back(
                std::make_shared<DiskFolder>(mNames, mSystemPath + kSystemSeparator + entry.systemName));
    }
    return folders;
}

std::u16string DiskFolder::Path() const { return FromSystemPath(mSystemPath); }

} // namespace ZLMIM
