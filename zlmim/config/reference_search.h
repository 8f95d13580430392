#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/config/folder_walk.h"
#include "zlmim/reader/load_budget.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ZLMIM
{

/// Maps the paths of folders to the kuids of their config files, in lower case. `std::nullopt` if the folder
/// has no config file, or the config file has no kuid.
/// \ingroup inside
using KuidCache = std::unordered_map<std::u16string, std::optional<std::u16string>>;

/// Searches for config files by their kuids, in the two levels of folders below a start folder.
///
/// A search stops at the config that it finds. With a cache, the next search continues there: the kuids of
/// earlier configs are cached, and no config is read twice.
/// \ingroup inside
class ReferenceSearch
{
public:
    /// Searches below `start`. `cache` may be shared with other searches, or null for a single `Find`. It
    /// must outlive the search, and so must `budget`.
    ReferenceSearch(const Folder& start, LoadBudget& budget, KuidCache* cache);

    /// Path of the first config file whose kuid, in lower case, equals `kuid`; empty if there is no such
    /// file.
    /// @throws FileSystemError from a config that can't be read, or whose last line opens a quoted value.
    /// @throws BoundsError if a limit is exceeded.
    [[nodiscard]] std::u16string Find(const std::u16string& kuid);

private:
    [[nodiscard]] bool ConfigHasValue(const std::u16string& kuid, const Folder& folder);
    [[nodiscard]] std::optional<std::u16string> ReadKuid(const Folder& folder);

    LoadBudget* mBudget;
    KuidCache* mCache;
    FolderWalk mWalk;
    /// For each kuid seen so far, the path of the first folder with it. Both are in the cache.
    std::unordered_map<std::u16string_view, const std::u16string*> mByKuid;
};

} // namespace ZLMIM
