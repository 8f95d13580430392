#ifndef ZLMIM_CONFIG_ASSET_LOAD_H
#define ZLMIM_CONFIG_ASSET_LOAD_H

#include "zlmim/config/file_system.h"
#include "zlmim/config/reference_search.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZLMIM
{

/// What the load of a model shares with the loads of the models that it refers to: what is left of the
/// limits, the files that are open, the folders that have been listed and searched.
/// \ingroup inside
class AssetLoad
{
public:
    /// The load may cost what `limits` allow.
    explicit AssetLoad(const LoadLimits& limits) : mBudget(limits) {}
    AssetLoad(const AssetLoad&) = delete;
    AssetLoad& operator=(const AssetLoad&) = delete;
    ~AssetLoad() { mPaths->Forget(); }

    /// Marks a file as open while in scope.
    class OpenFileScope
    {
    public:
        /// The file of that identity; `load` must outlive the scope.
        OpenFileScope(AssetLoad& load, std::u16string fileIdentity);
        OpenFileScope(const OpenFileScope&) = delete;
        OpenFileScope& operator=(const OpenFileScope&) = delete;
        ~OpenFileScope();

    private:
        AssetLoad& mLoad;
    };

    /// Whether the file of that identity is open: a reference to it leads back to itself.
    [[nodiscard]] bool IsOpen(const std::u16string& fileIdentity) const;

    /// Counts one more model. False if it is one too many, or would be nested too deep.
    [[nodiscard]] bool AdmitModel();

    /// What is left of the limits.
    [[nodiscard]] LoadBudget& Budget() noexcept { return mBudget; }

    /// The folders that have been listed.
    [[nodiscard]] PathResolver& Paths() noexcept { return *mPaths; }
    /// The same, for a service object, which may outlive the load.
    [[nodiscard]] const std::shared_ptr<PathResolver>& SharedPaths() const noexcept { return mPaths; }

    /// The search for references that starts at a folder.
    [[nodiscard]] ReferenceSearch& SearchFrom(const Folder& start);

private:
    LoadBudget mBudget;
    std::shared_ptr<PathResolver> mPaths = std::make_shared<PathResolver>();
    KuidCache mKuids;
    /// By the paths of their start folders.
    std::map<std::u16string, ReferenceSearch> mSearches;
    std::vector<std::u16string> mOpenFiles;
    std::int32_t mModels = 1;
};

} // namespace ZLMIM

#endif
