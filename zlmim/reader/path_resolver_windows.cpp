#include "zlmim/reader/path_resolver.h"

#include "zlmim/model/errors.h"
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

/// @throws FileSystemError if the last call failed for lack of handles or memory, so it is unknown whether
/// the name exists.
void TestResources(const NativePath& nativePath)
{
    switch (::GetLastError())
    {
    case ERROR_TOO_MANY_OPEN_FILES:
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
    case ERROR_NO_SYSTEM_RESOURCES:
        throw FileSystemError(FileSystemError::Code::ReadError, nativePath);
    default:
        break;
    }
}

std::optional<FoundFile> Stat(NativePath nativePath)
{
    const std::wstring name = CallName(nativePath);
    if (name.empty())
        return std::nullopt;
    // Reading attributes needs neither read permission nor sharing. The flag is needed to open folders.
    const HANDLE opened = ::CreateFileW(
        name.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
    {
        TestResources(nativePath);
        return std::nullopt;
    }
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

/// A path's last name as it is spelt on disk; `name` itself if its folder doesn't list it.
std::u16string Spelt(const std::u16string& path, std::u16string_view name)
{
    WIN32_FIND_DATAW entry;
    const HANDLE found = ::FindFirstFileW(CallName(path).c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE)
        return std::u16string(name);
    ::FindClose(found);
    return Text(entry.cFileName);
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
    {
        TestResources(folder);
        return std::nullopt;
    }
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

std::optional<FoundFile> PathResolver::Find(std::u16string_view name, FoundFile::Kind kind)
{
    auto found = Stat(ToNativePath(name));
    return found && found->kind == kind ? std::move(found) : std::nullopt;
}

std::optional<NativePath> AbsoluteFolder(const NativePath& folder)
{
    const std::u16string absolute = AbsoluteName(folder);
    if (absolute.empty())
        return std::nullopt;
    const std::size_t root = RootLength(absolute);
    NativePath path = absolute.substr(0, root);
    for (std::size_t next = root + 1; next < absolute.size();)
    {
        const std::size_t end = std::min(absolute.find(u'\\', next), absolute.size());
        const auto name = std::u16string_view(absolute).substr(next, end - next);
        path += u'\\' + Spelt(absolute.substr(0, end), name);
        next = end + 1;
    }
    return path;
}

bool IsRoot(NativePathView absoluteFolder) { return RootLength(absoluteFolder) == absoluteFolder.size(); }

NativePath ToNativePath(std::u16string_view name)
{
    NativePath nativePath(name);
    std::replace(nativePath.begin(), nativePath.end(), u'/', u'\\');
    return nativePath;
}

std::u16string FromNativePath(NativePathView nativePath) { return std::u16string(nativePath); }

} // namespace ZLMIM
