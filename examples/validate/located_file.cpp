#include "located_file.h"

#include "words.h"

#include <algorithm>
#include <system_error>

namespace ZLMIM::Validate
{

std::optional<LocatedFile> Locate(std::u16string_view name, PathResolver& names)
{
    const auto found = names.Find(name, FoundFile::Kind::File);
    if (!found)
        return std::nullopt;
    LocatedFile file = {{found->identity, {}}, found->nativePath};
    const NativePath folderName = file.Folder();
    if (const auto folder =
            names.Find(folderName.empty() ? u"." : FromNativePath(folderName), FoundFile::Kind::Folder))
        file.Key.Folder = folder->identity;
    return file;
}

std::u16string ShownName(const NativePath& nativePath)
{
    std::filesystem::path path = ToPath(nativePath).lexically_normal();
    std::error_code failure;
    auto folder = std::filesystem::current_path(failure).native();
    folder += std::filesystem::path::preferred_separator;
    if (!failure && path.native().starts_with(folder))
        path = path.native().substr(folder.size());
    std::u16string shown = ToName(path);
    std::replace(shown.begin(), shown.end(), u'\\', static_cast<char16_t>(kNativeSeparator));
    return shown;
}

std::string QuotedFile(std::u16string_view name) { return Quoted(ShownName(ToNativePath(name))); }

std::filesystem::path ToPath(NativePathView nativePath)
{
    return std::filesystem::path::string_type(nativePath.begin(), nativePath.end());
}

std::u16string ToName(const std::filesystem::path& path)
{
    return FromNativePath(NativePath(path.native().begin(), path.native().end()));
}

std::u16string FolderOf(std::u16string_view name)
{
    const std::size_t backslash = name.rfind(u'\\');
    return backslash == std::u16string_view::npos ? u".\\" : std::u16string(name.substr(0, backslash + 1));
}

} // namespace ZLMIM::Validate
