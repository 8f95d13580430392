#include "zlmim/config/disk_folder.h"

#include <filesystem>
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

std::shared_ptr<DiskFolder> DiskFolder::Open(std::shared_ptr<PathResolver> names,
                                             const NativePath& nativePath)
try
{
    if (!std::filesystem::is_directory(nativePath))
        return nullptr;
    std::string absolute = Absolute(nativePath).string();
    if (absolute == "/")
        absolute.clear();
    return std::make_shared<DiskFolder>(std::move(paths), std::move(absolute));
}
catch (const std::filesystem::filesystem_error&)
{
    return nullptr;
}

bool DiskFolder::IsRootFolder() const { return mNativePath.empty(); }

} // namespace ZLMIM
