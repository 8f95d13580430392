#pragma once

#include "zlmim/config/file_system.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Bench
{

/// A file, or a tree of files, that is made to be expensive; or an honest asset that must not reach any
/// limit.
struct Hostile
{
    enum class Kind
    {
        Mesh,
        Animation,
        Asset,       ///< Loaded with `kUntrustedLimits`.
        HonestAsset, ///< Loaded with the default limits.
    };

    std::string name;
    Kind kind = Kind::Mesh;
    /// Result of the load: "true", "false", "done", the name of the error, or "whole" for an honest asset.
    std::string outcome;
    /// Writes the files into an empty folder, and returns the path of the file to load, relative to it. The
    /// working folder will be the file's own.
    std::function<std::string(const std::filesystem::path&)> write;
    /// The host's service, null for the disk.
    std::function<std::shared_ptr<ZLMIM::FileSystem>()> files = [] { return nullptr; };
};

[[nodiscard]] std::vector<Hostile> HostileFiles();
[[nodiscard]] std::vector<Hostile> HostileAssets();
[[nodiscard]] std::vector<Hostile> HonestAssets();

} // namespace Bench
