#include "zlmim/config/reference_search.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace ZLMIM
{
namespace
{

constexpr std::u16string_view kConfigName = u"config.txt";

/// What looking into one folder counts for, in characters of a config.
constexpr std::int64_t kCostOfALook = 1'024;

/// The value of the first line with that key; none without such a line.
std::optional<std::u16string> ConfigValue(std::u16string_view key, TextStream& stream, AssetLoad& load)
{
    std::u16string lineKey;
    std::u16string value;
    while (!stream.AtEndOfStream())
    {
        ReadConfigLine(stream, lineKey, value);
        if (lineKey == key)
            return value;
        load.SpendOnSearch(static_cast<std::int64_t>(lineKey.size() + value.size() + 1));
    }
    return std::nullopt;
}

} // namespace

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

ReferenceSearch::ReferenceSearch(const Folder& start) : mFolders(start.SubFolders()) {}

std::u16string ReferenceSearch::Find(const std::u16string& kuid, FileSystem& files, AssetLoad& load)
{
    const auto path = [](const Folder& folder) { return (folder.Path() += u'\\') += kConfigName; };
    for (auto& [passedKuid, folder] : mPassed)
        mByKuid.try_emplace(std::move(passedKuid), std::move(folder));
    mPassed.clear();
    if (const auto known = mByKuid.find(kuid); known != mByKuid.end())
        return path(*known->second);
    while (!load.IsSearchSpent())
    {
        const auto folder = NextFolder();
        if (!folder)
            break;
        load.SpendOnSearch(kCostOfALook);
        const auto stream = files.OpenIfExists(*folder, kConfigName);
        auto value = stream ? ConfigValue(u"kuid", *stream, load) : std::nullopt;
        if (!value)
            continue;
        MakeLowerCase(*value);
        const bool isWanted = *value == kuid;
        mPassed.emplace_back(*std::move(value), folder);
        if (isWanted)
            return path(*folder);
    }
    return {};
}

std::shared_ptr<Folder> ReferenceSearch::NextFolder()
{
    if (mParent)
    {
        mChildren = mParent->SubFolders();
        mNextChild = 0;
        mParent.reset();
    }
    if (mNextChild < mChildren.size())
        return std::move(mChildren[mNextChild++]);
    if (mNext == mFolders.size())
        return nullptr;
    return mParent = std::move(mFolders[mNext++]);
}

} // namespace ZLMIM
