#include "zlmim/config/disk_folder.h"

#include <utility>

namespace ZLMIM
{

DiskFolder::DiskFolder(std::shared_ptr<PathResolver> names, NativePath nativePath)
    : mNames(std::move(paths)), mNativePath(std::move(nativePath))
{
}

std::shared_ptr<Folder> DiskFolder::ParentFolder() const
{
    return std::make_shared<DiskFolder>(mNames, mNativePath.substr(0, mNativePath.rfind(kNativeSeparator)));
}

std::vector<std::shared_ptr<Folder>> DiskFolder::SubFolders() const
{
    std::vector<std::shared_ptr<Folder>> folders;
    for (const FolderEntry& entry : mNames->List(mNativePath + kNativeSeparator))
    {
        if (entry.isFolder && !entry.isWindows1252)
            folders.push_back(
                std::make_shared<DiskFolder>(mNames, mNativePath + kNativeSeparator + entry.nativePath));
    }
    return folders;
}

std::u16string DiskFolder::Path() const { return FromNativePath(mNativePath); }

} // namespace ZLMIM
