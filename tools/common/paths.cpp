#include "tools/common/paths.h"

#include "tools/common/text.h"

#include <algorithm>
#include <system_error>

namespace ZLMIM::Tools
{

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

std::string ShownFile(std::u16string_view name) { return Printable(ShownName(ToNativePath(name))); }

std::filesystem::path ToPath(NativePathView nativePath)
{
    return std::filesystem::path::string_type(nativePath.begin(), nativePath.end());
}

std::filesystem::path FromUtf8Path(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

std::string ToUtf8Path(const std::filesystem::path& path)
{
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
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

std::u16string_view BaseName(std::u16string_view name) { return name.substr(name.rfind(u'\\') + 1); }

} // namespace ZLMIM::Tools
