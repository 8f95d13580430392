#include "zlmim/config/disk_file_system.h"

#include "zlmim/config/disk_text_stream.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/native_path.h"

#include <utility>

namespace ZLMIM
{
namespace
{

/// A folder with its absolute path, see `AbsoluteFolder`.
class DiskFolder : public Folder
{
public:
    DiskFolder(std::shared_ptr<PathResolver> paths, NativePath path, bool isText)
        : mPaths(std::move(paths)), mPath(std::move(path)), mIsText(isText)
    {
    }

    [[nodiscard]] bool IsRootFolder() const override { return IsRoot(mPath); }
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override
    {
        return std::make_shared<DiskFolder>(mPaths, mPath.substr(0, mPath.rfind(kNativeSeparator)), mIsText);
    }
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override
    {
        std::vector<std::shared_ptr<Folder>> folders;
        for (const FolderEntry& entry : mPaths->List(mPath + kNativeSeparator))
        {
            if (entry.isFolder && !entry.isWindows1252)
                folders.push_back(std::make_shared<DiskFolder>(
                    mPaths, mPath + kNativeSeparator + entry.nativePath, mIsText && entry.isText));
        }
        return folders;
    }
    [[nodiscard]] std::u16string Path() const override { return FromNativePath(mPath); }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const override
    {
        // Most folders have the file, under its exact name.
        if (mIsText)
        {
            if (auto file = File::OpenExact(mPath + kNativeSeparator + ToNativePath(name)))
                return std::make_unique<DiskTextStream>(*std::move(file));
        }
        DiskFileSystem files(mPaths);
        const std::u16string path = (Path() += u'\\') += name;
        return files.FileExists(path) ? files.OpenTextFile(path) : nullptr;
    }

private:
    std::shared_ptr<PathResolver> mPaths;
    NativePath mPath;
    /// Whether `Path`, as text, leads back to this folder. If not, it may be the path of another folder.
    bool mIsText;
};

} // namespace

std::shared_ptr<PathResolver> DiskFileSystem::Paths() const
{
    return mPaths ? mPaths : std::make_shared<PathResolver>();
}

bool DiskFileSystem::FileExists(const std::u16string& path)
{
    return Paths()->Find(path, FoundFile::Kind::File).has_value();
}

std::unique_ptr<TextStream> DiskFileSystem::OpenTextFile(const std::u16string& path)
{
    const auto paths = Paths();
    File file = File::Open(path, *paths);
    paths->PinFolderOf(path, file.FoundAt());
    return std::make_unique<DiskTextStream>(std::move(file));
}

std::shared_ptr<Folder> DiskFileSystem::GetFolder(const std::u16string& path)
{
    const auto paths = Paths();
    const auto found = paths->Find(path, FoundFile::Kind::Folder);
    auto absolute = found ? AbsoluteFolder(found->nativePath) : std::nullopt;
    if (!absolute)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    const bool isText = ToNativePath(FromNativePath(*absolute)) == *absolute;
    return std::make_shared<DiskFolder>(paths, *std::move(absolute), isText);
}

std::u16string DiskFileSystem::FileIdentity(const std::u16string& path)
{
    const auto found = Paths()->Find(path, FoundFile::Kind::File);
    if (!found)
        return path;
    const auto [device, number] = found->identity;
    const std::string identity = std::to_string(device) + ":" + std::to_string(number);
    return {identity.begin(), identity.end()};
}

} // namespace ZLMIM
