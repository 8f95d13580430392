#include "zlmim/config/disk_folder.h"

#include "zlmim/reader/windows_name.h"

#include <algorithm>
#include <windows.h>

namespace ZLMIM
{
namespace
{

/// A path's last name as it is spelt on disk; as it is, if its folder doesn't tell.
std::u16string Spelt(const std::u16string& path, std::u16string_view name)
{
    WIN32_FIND_DATAW entry;
    const HANDLE found = ::FindFirstFileW(CallName(path).c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE)
        return std::u16string(name);
    ::FindClose(found);
    const std::wstring_view spelt = entry.cFileName;
    return {spelt.begin(), spelt.end()};
}

} // namespace

std::shared_ptr<DiskFolder> DiskFolder::Open(std::shared_ptr<PathResolver> names,
                                             const NativePath& nativePath)
{
    const std::u16string absolute = AbsoluteName(nativePath);
    const FoundFile* const found = absolute.empty() ? nullptr : names->Find(absolute);
    if (!found || found->kind != FoundFile::Kind::Folder)
        return nullptr;
    const std::size_t root = RootLength(absolute);
    NativePath path = absolute.substr(0, root);
    for (std::size_t next = root + 1; next < absolute.size();)
    {
        const std::size_t end = std::min(absolute.find(u'\\', next), absolute.size());
        const auto name = std::u16string_view(absolute).substr(next, end - next);
        path += u'\\' + Spelt(absolute.substr(0, end), name);
        next = end + 1;
    }
    return std::make_shared<DiskFolder>(std::move(paths), std::move(path));
}

bool DiskFolder::IsRootFolder() const { return RootLength(mNativePath) == mNativePath.size(); }

} // namespace ZLMIM
