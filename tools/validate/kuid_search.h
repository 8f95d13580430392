#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/reader/load_budget.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZLMIM::Validate
{

/// A config that a search met.
struct FoundConfig
{
    std::u16string Path;
    /// The same for all paths to it.
    std::u16string Identity;
    /// Why it couldn't be read; empty if it could. A search ends there.
    std::string Failure;
};

/// All configs in the two levels of folders below a start folder, in the order of a model's search for a
/// kuid. A model stops at the first match; this index knows the others as well.
class KuidIndex
{
public:
    KuidIndex(const Folder& start, FileSystem& files);

    struct Match
    {
        /// The config that a search finds first, then the others.
        std::vector<const FoundConfig*> Configs;
        /// The config at which the search fails before it finds any; null if it doesn't fail.
        const FoundConfig* Failure = nullptr;
    };
    /// The configs whose kuid, in lower case, is `kuid`.
    [[nodiscard]] Match Find(const std::u16string& kuid) const;

private:
    void Take(const Folder& folder, FileSystem& files);

    LoadBudget mBudget;
    std::vector<FoundConfig> mConfigs;
    /// Places in `mConfigs`, in their order.
    std::unordered_map<std::u16string, std::vector<std::size_t>> mByKuid;
    /// Place of the first config with a failure, or the number of configs if there is no failure.
    std::size_t mFirstFailure = 0;
};

/// The indexes of a run, each made once, by whichever thread needs it first.
class KuidSearch
{
public:
    /// The index that serves the references of a config in that folder.
    [[nodiscard]] const KuidIndex& From(const std::shared_ptr<Folder>& folder, FileSystem& files);

private:
    struct Slot
    {
        std::once_flag Once;
        std::unique_ptr<KuidIndex> Index;
    };

    std::mutex mMutex;
    std::map<std::u16string, Slot> mSlots;
};

} // namespace ZLMIM::Validate
