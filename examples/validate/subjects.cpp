#include "subjects.h"

#include "located_file.h"

#include "examples/command_line.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <filesystem>
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

/// By the ending; any letter case.
SubjectKind KindOf(const std::u16string& lowerName)
{
    if (lowerName.ends_with(u".im"))
        return SubjectKind::Mesh;
    return lowerName.ends_with(u".kin") ? SubjectKind::Anim : SubjectKind::Asset;
}

class Finder
{
public:
    explicit Finder(PathResolver& names) : mNames(names) {}

    void Take(const std::u16string& name, bool isRecursive)
    {
        if (mNames.Find(name, FoundFile::Kind::File))
        {
            mSubjects.Files.push_back({KindOf(LowerCase(name)), name});
            return;
        }
        const auto folder = mNames.Find(name, FoundFile::Kind::Folder);
        if (!folder)
            Fail(name, mNames.Find(name, FoundFile::Kind::Other) ? "it is neither a file nor a folder"
                                                                 : "there is no such file");
        else if (isRecursive)
            Walk(ToPath(folder->nativePath));
        else
            TakeFolder(name);
    }

    Subjects Result() { return std::move(mSubjects); }

private:
    void TakeFolder(const std::u16string& folder)
    {
        const std::u16string name =
            (folder.ends_with(u'\\') ? folder : folder + u'\\') + std::u16string(kConfigName);
        if (mNames.Find(name, FoundFile::Kind::File))
            mSubjects.Files.push_back({SubjectKind::Asset, name});
        else
            Fail(folder, "there is no config.txt in this folder; --recursive looks below it");
    }

    void Walk(const fs::path& folder)
    {
        std::vector<fs::path> waiting = {folder};
        while (!waiting.empty())
        {
            const fs::path next = std::move(waiting.back());
            waiting.pop_back();
            auto folders = WalkOne(next);
            waiting.insert(waiting.end(), folders.rbegin(), folders.rend());
        }
    }

    /// Takes the files in a folder, and answers the folders in it.
    std::vector<fs::path> WalkOne(const fs::path& folder)
    {
        std::vector<fs::path> files;
        std::vector<fs::path> folders;
        std::error_code failure;
        for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
             entry.increment(failure))
        {
            std::error_code ignored; // what can't be asked is no file to judge
            if (!entry->is_symlink(ignored) && entry->is_directory(ignored))
                folders.push_back(entry->path());
            else if (entry->is_regular_file(ignored))
                files.push_back(entry->path());
        }
        if (failure)
            Fail(ToName(folder), failure.message());
        std::sort(files.begin(), files.end());
        std::sort(folders.begin(), folders.end());
        for (const fs::path& file : files)
        {
            const std::u16string lowerName = LowerCase(ToName(file.filename()));
            const SubjectKind kind = KindOf(lowerName);
            if (kind != SubjectKind::Asset || lowerName == kConfigName)
                mSubjects.Files.push_back({kind, ToName(file)});
        }
        return folders;
    }

    void Fail(const std::u16string& name, std::string message)
    {
        mSubjects.Findings.push_back(
            {Code::NotLoaded, ShownName(ToNativePath(name)), "", std::move(message)});
    }

    PathResolver& mNames;
    Subjects mSubjects;
};

} // namespace

Subjects FindSubjects(const std::vector<std::string>& paths, bool isRecursive, PathResolver& names)
{
    Finder finder(names);
    for (const std::string& path : paths)
        finder.Take(Examples::FileName(path), isRecursive);
    return finder.Result();
}

} // namespace ZLMIM::Validate
