#include "zlmim/config/reference_search.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/model/text.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace ZLMIM
{
namespace
{

/// What looking into one folder counts for.
constexpr std::int64_t kCostOfALook = 512;

/// The value of the first line with that key; none without such a line.
std::optional<std::u16string> ConfigValue(const std::u16string& key, TextStream& stream)
{
    std::u16string lineKey;
    std::u16string value;
    while (!stream.AtEndOfStream())
    {
        ReadConfigLine(stream, lineKey, value);
        if (lineKey == key)
            return value;
    }
    return std::nullopt;
}

} // namespace

ReferenceSearch::ReferenceSearch(const Folder& start) : mFolders(start.SubFolders()) {}

std::u16string ReferenceSearch::Find(const std::u16string& kuid, FileSystem& files, AssetLoad& load)
{
    if (const auto known = mPaths.find(kuid); known != mPaths.end())
        return known->second;
    while (!load.IsSpent())
    {
        const auto folder = NextFolder();
        if (!folder)
            break;
        load.Spend(kCostOfALook);
        std::u16string path = folder->Path() + u"\\config.txt";
        if (!files.FileExists(path))
            continue;
        const auto value = ConfigValue(u"kuid", *load.Spending(files.OpenTextFile(path)));
        if (!value)
            continue;
        const auto [known, isNew] = mPaths.try_emplace(LowerCase(*value), std::move(path));
        if (isNew && known->first == kuid)
            return known->second;
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
