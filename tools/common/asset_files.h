#ifndef ZLMIM_TOOLS_COMMON_ASSET_FILES_H
#define ZLMIM_TOOLS_COMMON_ASSET_FILES_H

#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/file_system.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <string>

namespace ZLMIM::Tools
{

enum class References : bool
{
    /// Models are loaded without the assets that they refer to.
    Skip,
    Follow,
};

/// The disk as a host sees it whose working folder is the asset's, whatever the real one is. For one load: the
/// asset is the first one that is opened.
class AssetFiles : public FileSystem
{
public:
    AssetFiles(std::shared_ptr<PathResolver> names, References references);

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;
    [[nodiscard]] std::u16string WorkingFolder() override;

private:
    DiskFileSystem mDisk;
    References mReferences;
    /// The asset's config: the first text file that is opened.
    std::u16string mConfig;
};

} // namespace ZLMIM::Tools

#endif
