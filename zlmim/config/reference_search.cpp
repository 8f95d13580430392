#include "zlmim/config/reference_search.h"

#include "zlmim/config/config_line.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace ZLMIM
{
namespace
{

constexpr std::u16string_view kConfigName = u"config.txt";

std::u16string ConfigPath(const Folder& folder) { return (folder.Path() += u'\\') += kConfigName; }

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
        if (ConfigHasValue(kuid, folder))
            return ConfigPath(*folder);
    }
    return {};
}

bool ReferenceSearch::ConfigHasValue(const std::u16string& kuid, const std::shared_ptr<Folder>& folder)
{
    if (!mCache)
        return ReadKuid(*folder) == kuid;
    auto [known, isNew] = mCache->try_emplace(folder->Path());
    if (isNew)
    {
        mBudget->ChargeMemory(kFolderMemory);
        known->second = ReadKuid(*folder);
    }
    if (known->second)
        mByKuid.try_emplace(*known->second, folder);
    return known->second == kuid;
}

std::optional<std::u16string> ReferenceSearch::ReadKuid(const Folder& folder)
{
    const auto stream = folder.OpenTextFile(kConfigName);
    if (!stream)
        return std::nullopt;
    auto kuid =
        NameFileInErrors(ConfigPath(folder), [&] { return FirstConfigValue(u"kuid", *stream, *mBudget); });
    if (kuid)
        MakeLowerCase(*kuid);
    return kuid;
}

} // namespace ZLMIM
