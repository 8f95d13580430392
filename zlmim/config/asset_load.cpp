#include "zlmim/config/asset_load.h"

#include <algorithm>
#include <utility>

namespace ZLMIM
{

AssetLoad::OpenFileScope::OpenFileScope(AssetLoad& load, std::u16string fileIdentity) : mLoad(load)
{
    mLoad.mOpenFiles.push_back(std::move(fileIdentity));
}

AssetLoad::OpenFileScope::~OpenFileScope() { mLoad.mOpenFiles.pop_back(); }

bool AssetLoad::IsOpen(const std::u16string& fileIdentity) const
{
    return std::find(mOpenFiles.begin(), mOpenFiles.end(), fileIdentity) != mOpenFiles.end();
}

bool AssetLoad::AdmitModel()
{
    if (mModels >= kMaxModels || mOpenFiles.size() >= kMaxModelDepth)
        return false;
    ++mModels;
    return true;
}

ReferenceSearch& AssetLoad::SearchFrom(const Folder& start)
{
    std::u16string path = start.Path();
    if (const auto known = mSearches.find(path); known != mSearches.end())
        return known->second;
    return mSearches.emplace(std::move(path), ReferenceSearch(start, mBudget, &mKuids)).first->second;
}

} // namespace ZLMIM
