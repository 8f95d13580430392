#ifndef ZLMIM_CONFIG_FOLDER_WALK_H
#define ZLMIM_CONFIG_FOLDER_WALK_H

#include "zlmim/config/file_system.h"
#include "zlmim/reader/load_budget.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZLMIM
{

/// The name of the folder in which the asset with this kuid is looked for first: in lower case, with blanks
/// for the colons, and without angle brackets. \ingroup inside
[[nodiscard]] std::u16string KuidFolderName(const std::u16string& kuid);

/// The folder where the search for an asset starts: two levels above the folder that refers to it, or the
/// root where that comes first.
/// \ingroup inside
[[nodiscard]] std::shared_ptr<Folder> StartFolder(std::shared_ptr<Folder> folder);

/// Visits the folders one and two levels below a start folder: a folder before its children, and all its
/// children before its next sibling. A folder is listed when the walk gets there.
/// \ingroup inside
class FolderWalk
{
public:
    /// Starts below `start`, which is not visited. `budget` is charged for each visit, and must outlive the
    /// walk.
    FolderWalk(const Folder& start, LoadBudget& budget);

    /// The next folder; null at the end.
    /// @throws BoundsError where a limit is exceeded, and what the service throws.
    [[nodiscard]] std::shared_ptr<Folder> Next();

private:
    using Folders = std::vector<std::shared_ptr<Folder>>;
    [[nodiscard]] Folders SubFolders(const Folder& folder);

    LoadBudget* mBudget;
    Folders mFolders;
    std::size_t mNext = 0;
    /// The folder of the first level that was visited last: its children are next.
    std::shared_ptr<Folder> mParent;
    Folders mChildren;
    std::size_t mNextChild = 0;
};

} // namespace ZLMIM

#endif
