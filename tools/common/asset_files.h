#pragma once

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

/// Reads the disk as if each asset's own folder were the working folder, whatever the real one is.
class AssetFiles : public FileSystem
{
public:
    /// `config` is the name under which the asset is loaded.
    AssetFiles(std::u16string config, std::shared_ptr<PathResolver> names, References references);

    [[nodiscard]] bool FileExists(const std::u16string& path) override;
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override;
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override;
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override;
    [[nodiscard]] std::u16string WorkingFolder(const std::u16string& configFolder) override;

private:
    std::u16string mConfig;
    DiskFileSystem mDisk;
    References mReferences;
};

} // namespace ZLMIM::Tools
