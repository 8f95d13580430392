#include "tools/common/asset_files.h"

#include "tools/common/paths.h"

#include <utility>
#include <vector>

namespace ZLMIM::Tools
{
namespace
{

/// A folder in which a search for references ends immediately.
class EmptyFolder : public Folder
{
public:
    [[nodiscard]] bool IsRootFolder() const override { return true; }
    [[nodiscard]] std::shared_ptr<Folder> ParentFolder() const override { return nullptr; }
    [[nodiscard]] std::vector<std::shared_ptr<Folder>> SubFolders() const override { return {}; }
    [[nodiscard]] std::u16string Path() const override { return {}; }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(std::u16string_view) const override
    {
        return nullptr;
    }
};

} // namespace

AssetFiles::AssetFiles(std::u16string config, std::shared_ptr<PathResolver> names, References references)
    : mConfig(std::move(config)), mDisk(std::move(names)), mReferences(references)
{
}

bool AssetFiles::FileExists(const std::u16string& path)
{
    const bool isReference = path != mConfig && BaseName(path) == u"config.txt";
    return !(isReference && mReferences == References::Skip) && mDisk.FileExists(path);
}

std::unique_ptr<TextStream> AssetFiles::OpenTextFile(const std::u16string& path)
{
    return mDisk.OpenTextFile(path);
}

std::shared_ptr<Folder> AssetFiles::GetFolder(const std::u16string& path)
{
    return mReferences == References::Skip ? std::make_shared<EmptyFolder>() : mDisk.GetFolder(path);
}

std::u16string AssetFiles::FileIdentity(const std::u16string& path) { return mDisk.FileIdentity(path); }

std::u16string AssetFiles::WorkingFolder(const std::u16string& configFolder) { return configFolder; }

} // namespace ZLMIM::Tools
