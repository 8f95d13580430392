#include "zlmim/config/disk_folder.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <tuple>
#include <utility>

namespace ZLMIM
{
namespace
{

/// The absolute path of `path`, without a trailing slash. Links keep their names, but what `..` means is the
/// system's to say: the folder above the one that a link leads to.
std::filesystem::path Absolute(const std::filesystem::path& path)
{
    std::filesystem::path absolute;
    for (const auto& part : std::filesystem::absolute(path))
    {
        if (part == "..")
            absolute = std::filesystem::canonical(absolute).parent_path();
        else if (part != "." && !part.empty())
            absolute /= part;
    }
    return absolute;
}

} // namespace

std::shared_ptr<DiskFolder> DiskFolder::Open(std::shared_ptr<FileNames> names, const std::string& systemName)
try
{
    if (!std::filesystem::is_directory(systemName))
        return nullptr;
    std::string absolute = Absolute(systemName).string();
    if (absolute == "/")
        absolute.clear();
    return std::make_shared<DiskFolder>(std::move(names), std::move(absolute));
}
catch (const std::filesystem::filesystem_error&)
{
    return nullptr;
}

DiskFolder::DiskFolder(std::shared_ptr<FileNames> names, std::string systemPath)
    : mNames(std::move(names)), mSystemPath(std::move(systemPath))
{
}

bool DiskFolder::IsRootFolder() const { return mSystemPath.empty(); }

std::shared_ptr<Folder> DiskFolder::ParentFolder() const
{
    return std::make_shared<DiskFolder>(mNames, mSystemPath.substr(0, mSystemPath.rfind('/')));
}

std::vector<std::shared_ptr<Folder>> DiskFolder::SubFolders() const
{
    std::vector<std::shared_ptr<Folder>> folders;
    for (const FolderEntry& entry : mNames->List(mSystemPath + "/"))
    {
        if (entry.isFolder && !entry.isOtherReading)
            folders.push_back(std::make_shared<DiskFolder>(mNames, mSystemPath + "/" + entry.systemName));
    }
    return folders;
}

std::u16string DiskFolder::Path() const { return FromSystemPath(mSystemPath); }

} // namespace ZLMIM
