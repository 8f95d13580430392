#include "zlmim/config/disk_file_system.h"

#include "zlmim/config/disk_folder.h"
#include "zlmim/config/disk_text_stream.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/native_path.h"

#include <utility>

namespace ZLMIM
{

DiskFileSystem::DiskFileSystem(std::shared_ptr<PathResolver> paths) : mPaths(std::move(paths)) {}

std::shared_ptr<PathResolver> DiskFileSystem::Paths() const
{
    return mPaths ? mPaths : std::make_shared<PathResolver>();
}

bool DiskFileSystem::FileExists(const std::u16string& path)
{
    const auto paths = Paths();
    const FoundFile* const found = paths->Find(path);
    return found && found->kind == FoundFile::Kind::File;
}

std::unique_ptr<TextStream> DiskFileSystem::OpenTextFile(const std::u16string& path)
{
    return std::make_unique<DiskTextStream>(File::Open(path, *Paths()));
}

std::unique_ptr<TextStream> DiskFileSystem::OpenIfExists(const Folder& folder, std::u16string_view name)
{
    // Most folders have the file, under its exact name. A folder whose name isn't UTF-8, or has a backslash,
    // is another folder, or none, by its path.
    const auto* const diskFolder = dynamic_cast<const DiskFolder*>(&folder);
    if (diskFolder && ToNativePath(folder.Path()) == diskFolder->SystemPath())
    {
        if (auto file = File::OpenExact(diskFolder->SystemPath() + kNativeSeparator + ToNativePath(name)))
            return std::make_unique<DiskTextStream>(*std::move(file));
    }
    return FileSystem::OpenIfExists(folder, name);
}

std::shared_ptr<Folder> DiskFileSystem::GetFolder(const std::u16string& path)
{
    const auto paths = Paths();
    const FoundFile* const found = paths->Find(path);
    auto folder = found ? DiskFolder::Open(paths, found->nativePath) : nullptr;
    if (!folder)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    return folder;
}

std::u16string DiskFileSystem::FileIdentity(const std::u16string& path)
{
    const auto paths = Paths();
    const FoundFile* const found = paths->FindAgain(path);
    if (!found)
        return path;
    const auto [device, number] = found->identity;
    const std::string identity = std::to_string(device) + ":" + std::to_string(number);
    return {identity.begin(), identity.end()};
}

} // namespace ZLMIM
