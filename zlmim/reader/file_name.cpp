#include "zlmim/reader/file_name.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <dirent.h>
#include <memory>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace ZLMIM
{
namespace
{

std::optional<struct stat> Status(const std::string& systemName)
{
    struct stat status;
    return ::stat(systemName.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool EqualsInLowerCase(std::string_view entry, std::u16string_view lowerPart)
{
    const auto utf8 = FromUtf8(entry);
    return (utf8 && LowerCase(*utf8) == lowerPart) || LowerCase(FromWindows1252(entry)) == lowerPart;
}

/// Names of a folder's entries that equal `part` in lower case, in byte order.
std::vector<std::string> MatchingEntries(const std::string& folder, std::u16string_view part)
{
    const auto close = [](DIR* listing) { ::closedir(listing); };
    const std::unique_ptr<DIR, decltype(close)> listing(::opendir(folder.empty() ? "." : folder.c_str()));
    std::vector<std::string> names;
    if (!listing)
        return names;
    const std::u16string lowerPart = LowerCase(part);
    while (const dirent* const entry = ::readdir(listing.get()))
    {
        if (EqualsInLowerCase(entry->d_name, lowerPart))
            names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The paths among `folder` + entry + `ending` under which something stands, for each of `folders` in turn. A
/// folder that several paths lead to (by links) is taken once, so that names with many parts stay cheap.
std::vector<std::string> Descend(const std::vector<std::string>& folders, std::u16string_view part,
                                 std::string_view ending)
{
    std::vector<std::string> found;
    std::set<std::pair<dev_t, ino_t>> seen;
    for (const std::string& folder : folders)
    {
        const bool isRelation = part == u"." || part == u"..";
        for (const std::string& entry :
             isRelation ? std::vector<std::string>{ToUtf8(part)} : MatchingEntries(folder, part))
        {
            std::string path = folder + entry + std::string(ending);
            const auto status = Status(path);
            if (status && seen.emplace(status->st_dev, status->st_ino).second)
                found.push_back(std::move(path));
        }
    }
    return found;
}

std::vector<std::u16string_view> Split(std::u16string_view name)
{
    std::vector<std::u16string_view> parts;
    while (!name.empty())
    {
        const std::size_t length = std::min(name.find(u'/'), name.size());
        if (length > 0)
            parts.push_back(name.substr(0, length));
        name.remove_prefix(std::min(length + 1, name.size()));
    }
    return parts;
}

} // namespace

std::string FindSystemName(std::u16string_view name)
{
    // A zero would end the name early for the system.
    if (name.empty() || name.find(u'\0') != std::u16string_view::npos)
        return {};
    std::u16string slashed(name);
    std::replace(slashed.begin(), slashed.end(), u'\\', u'/');
    std::string exact = ToUtf8(slashed);
    if (Status(exact))
        return exact;

    std::vector<std::string> paths = {slashed.front() == u'/' ? "/" : ""};
    const std::vector<std::u16string_view> parts = Split(slashed);
    for (std::size_t i = 0; i < parts.size() && !paths.empty(); ++i)
    {
        const bool leadsOn = i + 1 < parts.size() || slashed.back() == u'/';
        paths = Descend(paths, parts[i], leadsOn ? "/" : "");
    }
    return paths.empty() ? std::string() : paths.front();
}

std::u16string FromSystemName(std::string_view systemName)
{
    auto utf8 = FromUtf8(systemName);
    return utf8 ? *std::move(utf8) : FromWindows1252(systemName);
}

} // namespace ZLMIM
