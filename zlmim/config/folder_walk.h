#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/reader/load_budget.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZLMIM
{

/// The name of the folder that is searched first for the asset with this kuid: in lower case, with blanks for
/// the colons, and without angle brackets.
/// \ingroup inside
[[nodiscard]] std::u16string KuidFolderName(const std::u16string& kuid);

/// The folder where the search for an asset starts: two levels above the folder that refers to it, or the
/// root if that is nearer.
/// \ingroup inside
[[nodiscard]] std::shared_ptr<Folder> StartFolder(std::shared_ptr<Folder> folder);

/// Visits the folders one and two levels below a start folder. A folder comes before its children, and all
/// its children before its next sibling. A folder is listed when the walk reaches it.
/// \ingroup inside
class FolderWalk
{
public:
    /// Starts below `start`, which isn't visited. `budget` is charged for each visit, and must outlive the
    /// walk.
    FolderWalk(const Folder& start, LoadBudget& budget);

    /// The next folder; null at the end.
    /// @throws BoundsError if a limit is exceeded, and any error from the service.
    [[nodiscard]] std::shared_ptr<Folder> Next();

private:
    using Folders = std::vector<std::shared_ptr<Folder>>;
    [[nodiscard]] Folders SubFolders(const Folder& folder);

    LoadBudget* mBudget;
    Folders mFolders;
    std::size_t mNext = 0;
    /// The last visited folder of the first level: its children are next.
    std::shared_ptr<Folder> mParent;
    Folders mChildren;
    std::size_t mNextChild = 0;
};

} // namespace ZLMIM
