#include "zlmim/config/reference_search.h"

#include "zlmim/config/config_line.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/prefault.h"
#include "zlmim/model/text.h"

#include <string_view>

namespace ZLMIM
{
namespace
{

constexpr std::u16string_view kConfigName = u"config.txt";

/// Folders for which memory is prefaulted at once.
constexpr std::size_t kPrefaultedFolders = 64;

std::u16string ConfigPath(std::u16string folder) { return (folder += u'\\') += kConfigName; }

} // namespace

ReferenceSearch::ReferenceSearch(const Folder& start, LoadBudget& budget, KuidCache* cache)
    : mBudget(&budget), mCache(cache), mWalk(start, budget)
{
}

std::u16string ReferenceSearch::Find(const std::u16string& kuid)
{
    if (const auto known = mByKuid.find(kuid); known != mByKuid.end())
        return ConfigPath(*known->second);
    while (const auto folder = mWalk.Next())
    {
        if (ConfigHasValue(kuid, *folder))
            return ConfigPath(folder->Path());
    }
    return {};
}

bool ReferenceSearch::ConfigHasValue(const std::u16string& kuid, const Folder& folder)
{
    if (!mCache)
        return ReadKuid(folder) == kuid;
    auto [known, isNew] = mCache->try_emplace(folder.Path());
    if (isNew)
    {
        if (mCache->size() % kPrefaultedFolders == 1)
            PrefaultHeap(kPrefaultedFolders * kFolderMemory);
        mBudget->ChargeMemory(kFolderMemory);
        known->second = ReadKuid(folder);
    }
    if (known->second)
        mByKuid.try_emplace(*known->second, &known->first);
    return known->second == kuid;
}

std::optional<std::u16string> ReferenceSearch::ReadKuid(const Folder& folder)
try
{
    const auto stream = folder.OpenTextFile(kConfigName);
    auto kuid = stream ? FirstConfigValue(u"kuid", *stream, *mBudget) : std::nullopt;
    if (kuid)
        MakeLowerCase(*kuid);
    return kuid;
}
catch (BoundsError& error)
{
    error.SetFile(ConfigPath(folder.Path()));
    throw;
}

} // namespace ZLMIM
