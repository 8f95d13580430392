#include "subjects.h"

#include "located_file.h"
#include "spelling.h"

#include "tools/common/arguments.h"
#include "tools/common/paths.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

namespace fs = std::filesystem;

constexpr std::u16string_view kConfigName = u"config.txt";

/// Whether a name is nearly that of a config.
bool IsLikeConfig(std::u16string_view lowerName)
{
    constexpr std::u16string_view kStem = u"config.";
    return lowerName != kConfigName &&
           (lowerName.starts_with(kStem) || EditDistance(lowerName, kConfigName) <= 2);
}

/// Whether a file has a kuid near its start, as configs do.
bool HasKuid(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 4'096> start = {};
    stream.read(start.data(), start.size());
    const auto size = static_cast<std::size_t>(stream.gcount());
    return LowerCase(FromWindows1252(std::string_view(start.data(), size))).find(u"<kuid") !=
           std::u16string::npos;
}

class Finder
{
public:
    explicit Finder(PathResolver& names) : mNames(names) {}

    void Take(const std::u16string& name, bool isRecursive)
    {
        const auto folder = mNames.Find(name, FoundFile::Kind::Folder);
        if (folder && isRecursive)
            return Walk(Tools::ToPath(folder->nativePath));
        auto input = Tools::FindInput(name, mNames);
        if (auto* const why = std::get_if<std::string>(&input))
            Fail(name, *why + (folder ? "; --recursive looks into the folders below" : ""));
        else
            mSubjects.Files.push_back(std::move(std::get<Tools::Input>(input)));
    }

    Subjects Result() { return std::move(mSubjects); }

private:
    void Walk(const fs::path& folder)
    {
        const std::size_t before = mSubjects.Files.size() + mSubjects.Findings.size();
        std::vector<fs::path> waiting = {folder};
        while (!waiting.empty())
        {
            const fs::path next = std::move(waiting.back());
            waiting.pop_back();
            auto folders = WalkOne(next);
            waiting.insert(waiting.end(), folders.rbegin(), folders.rend());
        }
        if (mSubjects.Files.size() + mSubjects.Findings.size() == before)
            Fail(Tools::ToName(folder), "there is no config.txt, mesh or animation in this folder or below");
    }

    /// Takes the files in a folder, and returns the folders in it.
    std::vector<fs::path> WalkOne(const fs::path& folder)
    {
        std::vector<fs::path> files;
        std::vector<fs::path> folders;
        std::error_code failure;
        for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
             entry.increment(failure))
        {
            std::error_code ignored; // entries of unknown type are skipped
            if (!entry->is_symlink(ignored) && entry->is_directory(ignored))
                folders.push_back(entry->path());
            else if (entry->is_regular_file(ignored))
                files.push_back(entry->path());
        }
        if (failure)
            Fail(Tools::ToName(folder), failure.message());
        std::sort(files.begin(), files.end());
        std::sort(folders.begin(), folders.end());
        bool hasConfig = false;
        const fs::path* misnamed = nullptr;
        for (const fs::path& file : files)
        {
            const std::u16string lowerName = LowerCase(Tools::ToName(file.filename()));
            const Tools::Kind kind = Tools::KindOf(lowerName);
            hasConfig = hasConfig || lowerName == kConfigName;
            if (lowerName == u"config.txt.txt" || lowerName == u"config" || lowerName == u"config.text" ||
                (IsLikeConfig(lowerName) && HasKuid(file)))
                misnamed = &file;
            if (kind != Tools::Kind::Model || lowerName == kConfigName)
                mSubjects.Files.push_back({kind, Tools::ToName(file)});
        }
        if (misnamed && !hasConfig)
            Add(Code::ConfigName, NativePath(misnamed->native().begin(), misnamed->native().end()),
                "there is no config.txt in this folder; rename this file");
        return folders;
    }

    void Fail(const std::u16string& name, std::string message)
    {
        Add(Code::NotLoaded, ToNativePath(name), std::move(message));
    }

    void Add(Code code, const NativePath& name, std::string message)
    {
        Finding& finding = mSubjects.Findings.emplace_back();
        finding.Code = code;
        finding.File = Tools::ShownName(name);
        finding.Message = std::move(message);
    }

    PathResolver& mNames;
    Subjects mSubjects;
};

} // namespace

Subjects FindSubjects(const std::vector<std::string>& paths, bool isRecursive, PathResolver& names)
{
    Finder finder(names);
    for (const std::string& path : paths)
        finder.Take(Tools::FileName(path), isRecursive);
    return finder.Result();
}

} // namespace ZLMIM::Validate
