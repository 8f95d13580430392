#include "zlmim/reader/file_names.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/load_limits.h"

#include <algorithm>
#include <tuple>

namespace ZLMIM
{

std::span<const FolderEntry> FileNames::List(SystemName systemFolder)
{
    if (const auto known = mListings.find(systemFolder); known != mListings.end())
        return known->second;
    auto listing = ReadListing(systemFolder);
    if (!listing)
        return {};
    auto& entries = *listing;
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b)
              { return std::tie(a.lowerName, a.systemName) < std::tie(b.lowerName, b.systemName); });
    Remember(sizeof(FolderEntry) * (entries.size() + 1));
    return mListings.emplace(std::move(systemFolder), std::move(entries)).first->second;
}

void FileNames::Forget()
{
    mListings.clear();
    mFolders.clear();
    mRemembered = 0;
}

void FileNames::Remember(std::size_t size)
{
    if (mRemembered + size > kMaxRememberedListings)
        Forget();
    mRemembered += size;
}

bool IsAbsoluteName(std::u16string_view name)
{
    const bool hasDrive = kSystemSeparator == u'\\' && name.size() > 1 && name[1] == u':';
    return hasDrive || name.starts_with(u'\\') || name.starts_with(u'/');
}

std::u16string FromSystemName(std::string_view systemName)
{
    auto utf8 = FromUtf8(systemName);
    return utf8 ? *std::move(utf8) : FromWindows1252(systemName);
}

} // namespace ZLMIM
