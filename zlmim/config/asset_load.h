#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/config/reference_search.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM
{

/// State that the load of a model shares with the loads of the models that it refers to: the remaining
/// limits, the open files, and the folders that have been listed and searched.
/// \ingroup inside
class AssetLoad
{
public:
    /// `limits` limit the cost of the load.
    explicit AssetLoad(const LoadLimits& limits) : mBudget(limits) {}
    AssetLoad(const AssetLoad&) = delete;
    AssetLoad& operator=(const AssetLoad&) = delete;
    ~AssetLoad() { mPaths->Forget(); }

    /// Marks a file as open while in scope.
    class OpenFileScope
    {
    public:
        /// Marks the file of that identity; `load` must outlive the scope.
        OpenFileScope(AssetLoad& load, std::u16string fileIdentity) : mFiles(load.mOpenFiles)
        {
            mFiles.push_back(std::move(fileIdentity));
        }
        OpenFileScope(const OpenFileScope&) = delete;
        OpenFileScope& operator=(const OpenFileScope&) = delete;
        ~OpenFileScope() { mFiles.pop_back(); }

    private:
        std::vector<std::u16string>& mFiles;
    };

    /// Whether the file of that identity is open. If it is, a reference to it leads back to itself.
    [[nodiscard]] bool IsOpen(const std::u16string& fileIdentity) const
    {
        return std::find(mOpenFiles.begin(), mOpenFiles.end(), fileIdentity) != mOpenFiles.end();
    }

    /// Counts another model. Returns false if there are too many, or if it would be nested too deep.
    [[nodiscard]] bool AdmitModel()
    {
        if (mModels >= kMaxModels || mOpenFiles.size() >= kMaxModelDepth)
            return false;
        ++mModels;
        return true;
    }

    /// The remaining limits.
    [[nodiscard]] LoadBudget& Budget() noexcept { return mBudget; }

    /// The cache of listed folders. Shared, since service objects may outlive the load.
    [[nodiscard]] const std::shared_ptr<PathResolver>& Paths() const noexcept { return mPaths; }

    /// The search for references that starts at a folder.
    [[nodiscard]] ReferenceSearch& SearchFrom(const Folder& start)
    {
        return mSearches.try_emplace(start.Path(), start, mBudget, &mKuids).first->second;
    }

private:
    LoadBudget mBudget;
    std::shared_ptr<PathResolver> mPaths = std::make_shared<PathResolver>();
    KuidCache mKuids;
    /// Keyed by the paths of their start folders.
    std::map<std::u16string, ReferenceSearch> mSearches;
    std::vector<std::u16string> mOpenFiles;
    std::int32_t mModels = 1;
};

} // namespace ZLMIM
