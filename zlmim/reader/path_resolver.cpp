#include "zlmim/reader/path_resolver.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/load_limits.h"

#include <algorithm>
#include <tuple>

namespace ZLMIM
{

std::span<const FolderEntry> PathResolver::List(NativePath nativeFolder)
{
    if (const auto known = mListings.find(nativeFolder); known != mListings.end())
        return known->second;
    auto listing = ReadListing(nativeFolder);
    if (!listing)
        return {};
    std::ranges::sort(*listing, {},
                      [](const FolderEntry& entry) { return std::tie(entry.lowerName, entry.nativePath); });
    Remember(sizeof(FolderEntry) * (listing->size() + 1));
    return mListings.emplace(std::move(nativeFolder), *std::move(listing)).first->second;
}

void PathResolver::PinFolderOf(std::u16string_view name, NativePathView nativePath)
{
    std::u16string folder = LowerCase(name.substr(0, name.find_last_of(u"\\/") + 1));
    std::replace(folder.begin(), folder.end(), u'\\', u'/');
    nativePath.remove_suffix(nativePath.size() - (nativePath.rfind(kNativeSeparator) + 1));
    const auto [pinned, isNew] = mPinnedFolders.try_emplace(std::move(folder), nativePath);
    if (!isNew && pinned->second != nativePath)
        pinned->second.clear();
}

void PathResolver::Forget()
{
    ForgetListings();
    mPinnedFolders.clear();
}

void PathResolver::ForgetListings()
{
    mListings.clear();
    mFolders.clear();
    mRemembered = 0;
}

void PathResolver::Remember(std::size_t size)
{
    if (mRemembered + size > kMaxRememberedListings)
        ForgetListings();
    mRemembered += size;
}

bool IsAbsoluteName(std::u16string_view name)
{
    const bool hasDrive = kNativeSeparator == u'\\' && name.size() > 1 && name[1] == u':';
    return hasDrive || name.starts_with(u'\\') || name.starts_with(u'/');
}

std::u16string FromNativeName(std::string_view nativePath)
{
    auto utf8 = FromUtf8(nativePath);
    return utf8 ? *std::move(utf8) : FromWindows1252(nativePath);
}

} // namespace ZLMIM
