#include "zlmim/reader/path_resolver.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace ZLMIM
{
namespace
{

/// Names with more parts are found by their exact letters only.
constexpr std::ptrdiff_t kMaxParts = 64;

/// @throws FileSystemError if the last call failed for lack of descriptors or memory, so it is unknown
/// whether the name exists.
void TestResources(const std::string& nativePath)
{
    if (errno == EMFILE || errno == ENFILE || errno == ENOMEM)
        throw FileSystemError(FileSystemError::Code::ReadError, FromNativePath(nativePath));
}

std::optional<FoundFile> Stat(std::string nativePath)
{
    struct stat status;
    if (::stat(nativePath.c_str(), &status) != 0)
    {
        TestResources(nativePath);
        return std::nullopt;
    }
    const auto kind = S_ISREG(status.st_mode)   ? FoundFile::Kind::File
                      : S_ISDIR(status.st_mode) ? FoundFile::Kind::Folder
                                                : FoundFile::Kind::Other;
    return FoundFile{std::move(nativePath), kind, {status.st_dev, status.st_ino}};
}

bool IsFolder(const dirent& entry, const std::string& folder)
{
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    const auto found = Stat(folder + entry.d_name);
    return found && found->kind == FoundFile::Kind::Folder;
}

} // namespace

NativePath ExactNativePath(std::u16string_view name)
{
    // The system would end the name at a zero, and rejects a name of PATH_MAX bytes.
    if (name.empty() || name.size() >= PATH_MAX || name.find(u'\0') != std::u16string_view::npos)
        return {};
    return ToNativePath(name);
}

std::optional<std::vector<FolderEntry>> PathResolver::ReadListing(const NativePath& folder)
{
    const auto close = [](DIR* listing) { ::closedir(listing); };
    const std::unique_ptr<DIR, decltype(close)> listing(::opendir(folder.empty() ? "." : folder.c_str()));
    if (!listing)
    {
        TestResources(folder);
        return std::nullopt;
    }
    std::vector<FolderEntry> entries;
    while (const dirent* const entry = ::readdir(listing.get()))
    {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const bool isFolder = IsFolder(*entry, folder);
        auto utf8 = FromUtf8(name);
        const bool isText = utf8 && name.find('\\') == std::string_view::npos;
        if (!utf8 || utf8->size() != name.size())
            entries.push_back(
                {LowerCase(FromWindows1252(name)), std::string(name), isFolder, utf8.has_value(), isText});
        if (!utf8)
            continue;
        MakeLowerCase(*utf8);
        entries.push_back({*std::move(utf8), std::string(name), isFolder, false, isText});
    }
    return entries;
}

std::optional<FoundFile> PathResolver::Find(std::u16string_view name, FoundFile::Kind kind)
{
    std::string exact = ExactNativePath(name);
    if (exact.empty())
        return std::nullopt;
    if (auto found = Stat(std::move(exact)); found && found->kind == kind)
        return found;
    std::u16string slashed(name);
    std::replace(slashed.begin(), slashed.end(), u'\\', u'/');
    if (std::count(slashed.begin(), slashed.end(), u'/') >= kMaxParts)
        return std::nullopt;
    const std::size_t leaf = slashed.rfind(u'/') + 1;
    for (const std::string& folder : Folders(slashed.substr(0, leaf)))
    {
        for (const std::string& entry : Matching(folder, std::u16string_view(slashed).substr(leaf)))
        {
            if (auto found = Stat(folder + entry); found && found->kind == kind)
                return found;
        }
    }
    return std::nullopt;
}

std::optional<NativePath> AbsoluteFolder(const NativePath& folder)
try
{
    // Links keep their names. The system resolves `..`: after a link, it is the parent of the link's target.
    std::filesystem::path absolute;
    for (const auto& part : std::filesystem::absolute(folder))
    {
        if (part == "..")
            absolute = std::filesystem::canonical(absolute).parent_path();
        else if (part != "." && !part.empty())
            absolute /= part;
    }
    return absolute == "/" ? NativePath() : absolute.string();
}
catch (const std::filesystem::filesystem_error&)
{
    return std::nullopt;
}

bool IsRoot(NativePathView absoluteFolder) { return absoluteFolder.empty(); }

/// The entries of a folder that may match `part`, in order. An empty part matches the folder itself.
std::vector<std::string> PathResolver::Matching(const std::string& folder, std::u16string_view part)
{
    if (part.empty() || part == u"." || part == u"..")
        return {ToUtf8(part)};
    const std::u16string lowerPart = LowerCase(part);
    const auto entries = List(folder);
    auto entry = std::ranges::lower_bound(entries, lowerPart, {}, &FolderEntry::lowerName);
    std::vector<std::string> names;
    for (; entry != entries.end() && entry->lowerName == lowerPart; ++entry)
        names.push_back(entry->nativePath);
    return names;
}

/// All folders that may match a name, in order, each with a trailing slash. `name` has slashes, also after
/// its last part; empty for the working folder.
std::vector<std::string> PathResolver::Folders(const std::u16string& name)
{
    if (name.empty() || name == u"/")
        return {ToUtf8(name)};
    if (const auto pinned = mPinnedFolders.find(LowerCase(name));
        pinned != mPinnedFolders.end() && !pinned->second.empty())
        return {pinned->second};
    if (const auto known = mFolders.find(name); known != mFolders.end())
        return known->second;
    const std::size_t part = name.rfind(u'/', name.size() - 2) + 1;
    std::vector<std::string> found;
    // A folder that several names lead to (by links) is searched once, so that names with many parts stay
    // cheap.
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
    for (const std::string& folder : Folders(name.substr(0, part)))
    {
        for (const std::string& entry :
             Matching(folder, std::u16string_view(name).substr(part, name.size() - 1 - part)))
        {
            auto status = Stat(folder + entry + "/");
            if (status && seen.insert(status->identity).second)
                found.push_back(std::move(status->nativePath));
        }
    }
    Remember(sizeof(FolderEntry) * (found.size() + 1) + name.size() * sizeof(char16_t));
    return mFolders.emplace(name, std::move(found)).first->second;
}

NativePath ToNativePath(std::u16string_view name)
{
    NativePath nativePath = ToUtf8(name);
    std::replace(nativePath.begin(), nativePath.end(), '\\', '/');
    return nativePath;
}

std::u16string FromNativePath(NativePathView nativePath)
{
    auto path = FromUtf8(nativePath);
    if (!path)
    {
        // At least one name in it isn't UTF-8.
        const std::size_t separator = nativePath.rfind('/');
        if (separator == NativePathView::npos)
            return FromWindows1252(nativePath);
        return FromNativePath(nativePath.substr(0, separator)) + u'\\' +
               FromNativeName(nativePath.substr(separator + 1));
    }
    std::replace(path->begin(), path->end(), u'/', u'\\');
    return *std::move(path);
}

} // namespace ZLMIM
