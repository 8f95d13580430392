#include "kuid_search.h"

#include "tools/common/asset.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/folder_walk.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

constexpr std::u16string_view kConfigName = u"config.txt";

} // namespace

KuidIndex::KuidIndex(const Folder& start, FileSystem& files)
{
    FolderWalk walk(start, mBudget);
    while (const auto folder = walk.Next())
        Take(*folder, files);
    const auto failed = std::find_if(mConfigs.begin(), mConfigs.end(),
                                     [](const FoundConfig& config) { return !config.Failure.empty(); });
    mFirstFailure = static_cast<std::size_t>(failed - mConfigs.begin());
}

void KuidIndex::Take(const Folder& folder, FileSystem& files)
{
    FoundConfig config;
    std::optional<std::u16string> kuid;
    const Tools::Outcome outcome = Tools::Attempt(
        [&]
        {
            if (const auto stream = folder.OpenTextFile(kConfigName))
                kuid = FirstConfigValue(u"kuid", *stream, mBudget);
            return kuid.has_value();
        });
    if (!outcome.Thrown.empty())
        config.Failure = Tools::Describe(outcome);
    else if (kuid)
        MakeLowerCase(*kuid);
    else
        return;
    config.Path = (folder.Path() += u'\\') += kConfigName;
    config.Identity = files.FileIdentity(config.Path);
    if (kuid)
        mByKuid[*kuid].push_back(mConfigs.size());
    mConfigs.push_back(std::move(config));
}

KuidIndex::Match KuidIndex::Find(const std::u16string& kuid) const
{
    Match match;
    const auto found = mByKuid.find(kuid);
    std::size_t first = mConfigs.size();
    if (found != mByKuid.end())
    {
        first = found->second.front();
        for (const std::size_t place : found->second)
            match.Configs.push_back(&mConfigs[place]);
    }
    if (mFirstFailure < first)
        match.Failure = &mConfigs[mFirstFailure];
    return match;
}

const KuidIndex& KuidSearch::From(const std::shared_ptr<Folder>& folder, FileSystem& files)
{
    const auto start = StartFolder(folder);
    Slot* slot = nullptr;
    {
        const std::lock_guard lock(mMutex);
        slot = &mSlots[start->Path()];
    }
    std::call_once(slot->Once, [&] { slot->Index = std::make_unique<KuidIndex>(*start, files); });
    return *slot->Index;
}

} // namespace ZLMIM::Validate
