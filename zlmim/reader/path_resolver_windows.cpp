#include "zlmim/reader/path_resolver.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/windows_name.h"

#include <algorithm>
#include <memory>
#include <windows.h>

namespace ZLMIM
{
namespace
{

FoundFile::Kind KindOf(HANDLE handle, DWORD attributes)
{
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return FoundFile::Kind::Folder;
    const bool isRegular =
        ::GetFileType(handle) == FILE_TYPE_DISK && (attributes & FILE_ATTRIBUTE_DEVICE) == 0;
    return isRegular ? FoundFile::Kind::File : FoundFile::Kind::Other;
}

std::optional<FoundFile> Stat(NativePath nativePath)
{
    const std::wstring name = CallName(nativePath);
    if (name.empty())
        return std::nullopt;
    // Neither a right to read nor anybody's leave to share is needed to look; the flag is for folders.
    const HANDLE opened = ::CreateFileW(
        name.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return std::nullopt;
    const auto close = [](HANDLE handle) { ::CloseHandle(handle); };
    const std::unique_ptr<void, decltype(close)> handle(opened);
    BY_HANDLE_FILE_INFORMATION status;
    if (!::GetFileInformationByHandle(opened, &status))
        return std::nullopt;
    const FoundFile::Kind kind = KindOf(opened, status.dwFileAttributes);
    if (kind != FoundFile::Kind::Folder && name.back() == L'\\')
        return std::nullopt;
    const std::uint64_t number = (std::uint64_t{status.nFileIndexHigh} << 32U) | status.nFileIndexLow;
    return FoundFile{std::move(nativePath), kind, {status.dwVolumeSerialNumber, number}};
}

std::u16string Text(const wchar_t* name)
{
    const std::wstring_view wide = name;
    return {wide.begin(), wide.end()};
}

} // namespace

std::optional<std::vector<FolderEntry>> PathResolver::ReadListing(const NativePath& folder)
{
    std::vector<FolderEntry> entries;
    const std::wstring pattern = CallName(folder + u'*');
    WIN32_FIND_DATAW entry;
    const HANDLE first = ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch,
                                            nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (first == INVALID_HANDLE_VALUE)
        return std::nullopt;
    const auto close = [](HANDLE listing) { ::FindClose(listing); };
    const std::unique_ptr<void, decltype(close)> listing(first);
    do
    {
        std::u16string name = Text(entry.cFileName);
        if (name == u"." || name == u"..")
            continue;
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        entries.push_back({LowerCase(name), name, isFolder, false});
    } while (::FindNextFileW(listing.get(), &entry));
    return entries;
}

NativePath ExactNativePath(std::u16string_view name) { return ToNativePath(name); }

std::optional<FoundFile> PathResolver::LookUp(std::u16string_view name) { return Stat(ToNativePath(name)); }

NativePath ToNativePath(std::u16string_view name)
{
    NativePath nativePath(name);
    std::replace(nativePath.begin(), nativePath.end(), u'/', u'\\');
    return nativePath;
}

std::u16string FromNativePath(NativePathView nativePath) { return std::u16string(nativePath); }

} // namespace ZLMIM
