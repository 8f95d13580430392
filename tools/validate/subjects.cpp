#include "subjects.h"

#include "located_file.h"

#include "tools/common/arguments.h"
#include "tools/common/paths.h"
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
    explicit Finder(FileNames& names) : mNames(names) {}

    void Take(const std::u16string& name, bool isRecursive)
    {
        const FoundFile* const found = mNames.Find(name);
        if (found && found->kind == FoundFile::Kind::File)
            mSubjects.Files.push_back({KindOf(LowerCase(name)), name});
        else if (!found || found->kind != FoundFile::Kind::Folder)
            Fail(name, found ? "it is neither a file nor a folder" : "there is no such file");
        else if (isRecursive)
            Walk(Tools::ToPath(found->systemName));
        else
            TakeFolder(name);
    }

    Subjects Result() { return std::move(mSubjects); }

private:
    void TakeFolder(const std::u16string& folder)
    {
        const std::u16string name =
            (folder.ends_with(u'\\') ? folder : folder + u'\\') + std::u16string(kConfigName);
        const FoundFile* const found = mNames.Find(name);
        if (found && found->kind == FoundFile::Kind::File)
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
            Fail(Tools::ToName(folder), failure.message());
        std::sort(files.begin(), files.end());
        std::sort(folders.begin(), folders.end());
        for (const fs::path& file : files)
        {
            const std::u16string lowerName = LowerCase(Tools::ToName(file.filename()));
            const SubjectKind kind = KindOf(lowerName);
            if (kind != SubjectKind::Asset || lowerName == kConfigName)
                mSubjects.Files.push_back({kind, Tools::ToName(file)});
        }
        return folders;
    }

    void Fail(const std::u16string& name, std::string message)
    {
        mSubjects.Findings.push_back(
            {Code::NotLoaded, Tools::ShownName(ToSystemName(name)), "", std::move(message)});
    }

    FileNames& mNames;
    Subjects mSubjects;
};

} // namespace

Subjects FindSubjects(const std::vector<std::string>& paths, bool isRecursive, FileNames& names)
{
    Finder finder(names);
    for (const std::string& path : paths)
        finder.Take(Tools::FileName(path), isRecursive);
    return finder.Result();
}

} // namespace ZLMIM::Validate
