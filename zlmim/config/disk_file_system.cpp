#include "zlmim/config/disk_file_system.h"

#include "zlmim/config/disk_folder.h"
#include "zlmim/config/disk_text_stream.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/file_name.h"

#include <optional>
#include <sys/stat.h>

namespace ZLMIM
{
namespace
{

std::optional<struct stat> Status(const std::u16string& path)
{
    const std::string systemName = FindSystemName(path);
    struct stat status;
    return !systemName.empty() && ::stat(systemName.c_str(), &status) == 0 ? std::optional(status)
                                                                           : std::nullopt;
}

} // namespace

bool DiskFileSystem::FileExists(const std::u16string& path)
{
    const auto status = Status(path);
    return status && S_ISREG(status->st_mode);
}

std::unique_ptr<TextStream> DiskFileSystem::OpenTextFile(const std::u16string& path)
{
    return std::make_unique<DiskTextStream>(File::Open(path), path);
}

std::shared_ptr<Folder> DiskFileSystem::GetFolder(const std::u16string& path)
{
    auto folder = DiskFolder::Open(FindSystemName(path));
    if (!folder)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    return folder;
}

std::u16string DiskFileSystem::FileIdentity(const std::u16string& path)
{
    const auto status = Status(path);
    if (!status)
        return path;
    const std::string identity = std::to_string(status->st_dev) + ":" + std::to_string(status->st_ino);
    return {identity.begin(), identity.end()};
}

} // namespace ZLMIM
