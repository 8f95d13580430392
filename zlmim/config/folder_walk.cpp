#include "zlmim/config/folder_walk.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace ZLMIM
{

std::u16string KuidFolderName(const std::u16string& kuid)
{
    std::u16string name = LowerCase(kuid);
    std::replace(name.begin(), name.end(), u':', u' ');
    std::erase_if(name, [](char16_t c) { return c == u'<' || c == u'>'; });
    return name;
}

std::shared_ptr<Folder> StartFolder(std::shared_ptr<Folder> folder)
{
    for (int level = 0; level < 2 && !folder->IsRootFolder(); ++level)
        folder = folder->ParentFolder();
    return folder;
}

FolderWalk::FolderWalk(const Folder& start, LoadBudget& budget)
    : mBudget(&budget), mFolders(SubFolders(start))
{
}

std::shared_ptr<Folder> FolderWalk::Next()
{
    mBudget->ChargeWork(LoadCost::FolderVisit);
    if (mParent)
    {
        mChildren = SubFolders(*std::exchange(mParent, nullptr));
        mNextChild = 0;
    }
    if (mNextChild < mChildren.size())
        return std::move(mChildren[mNextChild++]);
    if (mNext == mFolders.size())
        return nullptr;
    return mParent = std::move(mFolders[mNext++]);
}

FolderWalk::Folders FolderWalk::SubFolders(const Folder& folder)
{
    Folders folders = folder.SubFolders();
    mBudget->RequireMemory(static_cast<std::int64_t>(folders.size()) * kFolderMemory);
    return folders;
}

} // namespace ZLMIM
