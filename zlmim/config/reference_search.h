#ifndef ZLMIM_CONFIG_REFERENCE_SEARCH_H
#define ZLMIM_CONFIG_REFERENCE_SEARCH_H

#include "zlmim/config/file_system.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM
{

class AssetLoad;

/// The name of the folder in which the asset with this kuid is looked for before all others: in lower case,
/// with blanks for the colons, and without angle brackets. \ingroup inside
[[nodiscard]] std::u16string KuidFolderName(const std::u16string& kuid);

/// Where the walk for an asset starts: two levels above the folder that refers to it, or at the root where
/// that comes first.
/// \ingroup inside
[[nodiscard]] std::shared_ptr<Folder> StartFolder(std::shared_ptr<Folder> folder);

/// The walk for config files by their kuid, over two levels of folders below a start folder: a folder before
/// its children, and all of these before the folder's next sibling.
///
/// A search goes no further than the config that it finds. The next one goes on there, since the kuids of the
/// configs that have been passed are known; so all searches of a load read each config once.
/// \ingroup inside
class ReferenceSearch
{
public:
    /// Looks into the folders below `start`, but not into `start` itself.
    explicit ReferenceSearch(const Folder& start);

    /// Path of the first config file whose kuid, in lower case, equals `kuid`; empty if there is none.
    /// @throws FileSystemError from a config that can't be read, or whose last line opens a quoted value.
    [[nodiscard]] std::u16string Find(const std::u16string& kuid, FileSystem& files, AssetLoad& load);

private:
    [[nodiscard]] std::shared_ptr<Folder> NextFolder();

    using Folders = std::vector<std::shared_ptr<Folder>>;
    Folders mFolders;
    std::size_t mNext = 0;
    /// The folder of the first level that was taken last: its children come next.
    std::shared_ptr<Folder> mParent;
    Folders mChildren;
    std::size_t mNextChild = 0;
    /// Folders with their configs' kuids: those that the last search has passed, and for those before them
    /// the first of each kuid. Most assets search but once.
    std::vector<std::pair<std::u16string, std::shared_ptr<Folder>>> mPassed;
    std::map<std::u16string, std::shared_ptr<Folder>> mByKuid;
};

} // namespace ZLMIM

#endif
