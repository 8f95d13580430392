#include "zlmim/config/disk_file_system.h"

#include "zlmim/config/disk_folder.h"
#include "zlmim/config/disk_text_stream.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/system_name.h"

#include <utility>

namespace ZLMIM
{

DiskFileSystem::DiskFileSystem(std::shared_ptr<FileNames> names) : mNames(std::move(names)) {}

std::shared_ptr<FileNames> DiskFileSystem::Names() const
{
    return mNames ? mNames : std::make_shared<FileNames>();
}

bool DiskFileSystem::FileExists(const std::u16string& path)
{
    const auto names = Names();
    const FoundFile* const found = names->Find(path);
    return found && found->kind == FoundFile::Kind::File;
}

std::unique_ptr<TextStream> DiskFileSystem::OpenTextFile(const std::u16string& path)
{
    return std::make_unique<DiskTextStream>(File::Open(path, *Names()));
}

std::unique_ptr<TextStream> DiskFileSystem::OpenIfExists(const Folder& folder, std::u16string_view name)
{
    // Most folders have the file, under its exact name. A folder whose name isn't UTF-8, or has a backslash,
    // is another folder, or none, by its path.
    const auto* const diskFolder = dynamic_cast<const DiskFolder*>(&folder);
    if (diskFolder && ToSystemName(folder.Path()) == diskFolder->SystemPath())
    {
        if (auto file = File::OpenExact(diskFolder->SystemPath() + kSystemSeparator + ToSystemName(name)))
            return std::make_unique<DiskTextStream>(*std::move(file));
    }
    return FileSystem::OpenIfExists(folder, name);
}

std::shared_ptr<Folder> DiskFileSystem::GetFolder(const std::u16string& path)
{
    const auto names = Names();
    const FoundFile* const found = names->Find(path);
    auto folder = found ? DiskFolder::Open(names, found->systemName) : nullptr;
    if (!folder)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    return folder;
}

std::u16string DiskFileSystem::FileIdentity(const std::u16string& path)
{
    const auto names = Names();
    const FoundFile* const found = names->FindAgain(path);
    if (!found)
        return path;
    const auto [device, number] = found->identity;
    const std::string identity = std::to_string(device) + ":" + std::to_string(number);
    return {identity.begin(), identity.end()};
}

} // namespace ZLMIM
