#include "zlmim/config/disk_folder.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/file_name.h"

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

std::shared_ptr<DiskFolder> DiskFolder::Open(const std::string& systemName)
try
{
    if (systemName.empty() || !std::filesystem::is_directory(systemName))
        return nullptr;
    const std::string absolute = Absolute(systemName).string();
    return std::make_shared<DiskFolder>(absolute == "/" ? std::string() : absolute);
}
catch (const std::filesystem::filesystem_error&)
{
    return nullptr;
}

DiskFolder::DiskFolder(std::string systemPath) : mSystemPath(std::move(systemPath)) {}

bool DiskFolder::IsRootFolder() const { return mSystemPath.empty(); }

std::shared_ptr<Folder> DiskFolder::ParentFolder() const
{
    return std::make_shared<DiskFolder>(mSystemPath.substr(0, mSystemPath.rfind('/')));
}

std::vector<std::shared_ptr<Folder>> DiskFolder::SubFolders() const
{
    struct Named
    {
        std::u16string lowerName;
        std::u16string name;
        std::string systemName;
    };
    std::vector<Named> children;
    std::error_code failure;
    std::filesystem::directory_iterator entries(mSystemPath + "/", failure);
    while (!failure && entries != std::filesystem::directory_iterator())
    {
        std::error_code vanished;
        if (entries->is_directory(vanished))
        {
            std::string systemName = entries->path().filename().string();
            std::u16string name = FromSystemName(systemName);
            std::u16string lowerName = LowerCase(name);
            children.push_back({std::move(lowerName), std::move(name), std::move(systemName)});
        }
        entries.increment(failure);
    }
    std::sort(children.begin(), children.end(),
              [](const Named& a, const Named& b) {
                  return std::tie(a.lowerName, a.name, a.systemName) <
                         std::tie(b.lowerName, b.name, b.systemName);
              });

    std::vector<std::shared_ptr<Folder>> folders;
    folders.reserve(children.size());
    for (const Named& child : children)
        folders.push_back(std::make_shared<DiskFolder>(mSystemPath + "/" + child.systemName));
    return folders;
}

std::u16string DiskFolder::Path() const
{
    // Name by name, since each may be UTF-8 or not.
    std::u16string path;
    std::size_t start = 0;
    while (start < mSystemPath.size())
    {
        const std::size_t end = std::min(mSystemPath.find('/', start + 1), mSystemPath.size());
        path += u'\\';
        path += FromSystemName(std::string_view(mSystemPath).substr(start + 1, end - start - 1));
        start = end;
    }
    return path;
}

} // namespace ZLMIM
