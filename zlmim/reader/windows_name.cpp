#include "zlmim/reader/windows_name.h"

#include "zlmim/reader/native_path.h"

#include <algorithm>
#include <windows.h>

namespace ZLMIM
{
namespace
{

constexpr std::u16string_view kShare = u"\\\\";
constexpr std::u16string_view kDevice = u"\\\\.\\";
// Names with this prefix are taken literally, and may be longer than `MAX_PATH`.
constexpr std::u16string_view kVerbatim = u"\\\\?\\";
constexpr std::u16string_view kVerbatimShare = u"\\\\?\\UNC\\";

/// The longest name that all calls accept in its plain form: the limit for folders is 12 characters below
/// that for files.
constexpr std::size_t kMaxPlainName = MAX_PATH - 13;

std::u16string WithoutVerbatim(std::u16string name)
{
    if (name.starts_with(kVerbatimShare))
        name.replace(0, kVerbatimShare.size(), kShare);
    else if (name.starts_with(kVerbatim) && name.size() > 5 && name[5] == u':')
        name.erase(0, kVerbatim.size());
    return name;
}

} // namespace

std::u16string AbsoluteName(std::u16string_view name)
{
    if (name.empty() || name.find(u'\0') != std::u16string_view::npos)
        return {};
    const std::u16string plain = WithoutVerbatim(ToNativePath(name));
    const std::wstring wide(plain.begin(), plain.end());
    std::wstring absolute(MAX_PATH, L'\0');
    DWORD length = ::GetFullPathNameW(wide.c_str(), MAX_PATH, absolute.data(), nullptr);
    if (length >= absolute.size())
    {
        absolute.resize(length);
        length = ::GetFullPathNameW(wide.c_str(), length, absolute.data(), nullptr);
    }
    // The working folder may have become longer in the meantime.
    if (length >= absolute.size())
        return {};
    std::u16string full(absolute.begin(), absolute.begin() + static_cast<std::ptrdiff_t>(length));
    return full.starts_with(kDevice) || full.starts_with(kVerbatim) ? std::u16string() : full;
}

std::wstring CallName(std::u16string_view name)
{
    std::u16string absolute = AbsoluteName(name);
    if (absolute.size() > kMaxPlainName)
    {
        if (absolute.starts_with(kShare))
            absolute.replace(0, kShare.size(), kVerbatimShare);
        else
            absolute.insert(0, kVerbatim);
    }
    return {absolute.begin(), absolute.end()};
}

std::size_t RootLength(std::u16string_view absoluteName)
{
    if (!absoluteName.starts_with(kShare))
        return std::min<std::size_t>(2, absoluteName.size());
    const std::size_t server = absoluteName.find(u'\\', kShare.size());
    const std::size_t share =
        server == std::u16string_view::npos ? server : absoluteName.find(u'\\', server + 1);
    return std::min(share, absoluteName.size());
}

} // namespace ZLMIM
