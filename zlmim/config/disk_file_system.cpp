#include "zlmim/config/disk_file_system.h"

#include "zlmim/config/disk_text_stream.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/file.h"
#include "zlmim/reader/system_name.h"

#include <utility>

namespace ZLMIM
{
namespace
{

/// A folder by its absolute path, see `AbsoluteFolder`.
class DiskFolder : public Folder
{
public:
    DiskFolder(std::shared_ptr<FileNames> names, SystemName path, bool isText)
        : mNames(std::move(names)), mPath(std::move(path)), mIsText(isText)
    {
    }

    [[nodiscard]] bool IsRootFolder() const override { return IsRoot(mPath); }
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override
    {
        return std::make_shared<DiskFolder>(mNames, mPath.substr(0, mPath.rfind(kSystemSeparator)), mIsText);
    }
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override
    {
        std::vector<std::shared_ptr<Folder>> folders;
        for (const FolderEntry& entry : mNames->List(mPath + kSystemSeparator))
        {
            if (entry.isFolder && !entry.isOtherReading)
                folders.push_back(std::make_shared<DiskFolder>(
                    mNames, mPath + kSystemSeparator + entry.systemName, mIsText && entry.isText));
        }
        return folders;
    }
    [[nodiscard]] std::u16string Path() const override { return FromSystemPath(mPath); }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(std::u16string_view name) const override
    {
        // Most folders have the file, under its exact name.
        if (mIsText)
        {
            if (auto file = File::OpenExact(mPath + kSystemSeparator + ToSystemName(name)))
                return std::make_unique<DiskTextStream>(*std::move(file));
        }
        DiskFileSystem files(mNames);
        const std::u16string path = (Path() += u'\\') += name;
        return files.FileExists(path) ? files.OpenTextFile(path) : nullptr;
    }

private:
    std::shared_ptr<FileNames> mNames;
    SystemName mPath;
    /// Whether `Path` leads back here, as text: else another folder may have that path.
    bool mIsText;
};

} // namespace

DiskFileSystem::DiskFileSystem(std::shared_ptr<FileNames> names) : mNames(std::move(names)) {}

std::shared_ptr<FileNames> DiskFileSystem::Names() const
{
    return mNames ? mNames : std::make_shared<FileNames>();
}

bool DiskFileSystem::FileExists(const std::u16string& path)
{
    return Names()->Find(path, FoundFile::Kind::File).has_value();
}

std::unique_ptr<TextStream> DiskFileSystem::OpenTextFile(const std::u16string& path)
{
    return std::make_unique<DiskTextStream>(File::Open(path, *Names()));
}

std::shared_ptr<Folder> DiskFileSystem::GetFolder(const std::u16string& path)
{
    const auto names = Names();
    const auto found = names->Find(path, FoundFile::Kind::Folder);
    auto absolute = found ? AbsoluteFolder(found->systemName) : std::nullopt;
    if (!absolute)
        throw FileSystemError(FileSystemError::Code::NoSuchFolder, path);
    const bool isText = ToSystemName(FromSystemPath(*absolute)) == *absolute;
    return std::make_shared<DiskFolder>(names, *std::move(absolute), isText);
}

std::u16string DiskFileSystem::FileIdentity(const std::u16string& path)
{
    const auto found = Names()->Find(path, FoundFile::Kind::File);
    if (!found)
        return path;
    const auto [device, number] = found->identity;
    const std::string identity = std::to_string(device) + ":" + std::to_string(number);
    return {identity.begin(), identity.end()};
}

} // namespace ZLMIM
