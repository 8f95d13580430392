#include "judge_references.h"

#include "located_file.h"
#include "words.h"

#include "examples/text.h"
#include "zlmim/config/folder_walk.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

class ReferenceJudge
{
public:
    ReferenceJudge(const std::u16string& config, FileSystem& files, KuidSearch& search, Report& report)
        : mFiles(files), mFolder(files.GetFolder(FolderOf(config))), mIndex(search.From(mFolder, files)),
          mReport(report)
    {
    }

    /// The config that a model loads; empty if it finds none.
    std::u16string Judge(const ConfigLine& reference, const std::string& andMore)
    {
        const std::u16string& kuid = reference.Value;
        const std::string place =
            "line " + std::to_string(reference.FirstLine) + ", " + Examples::Printable(reference.Key);
        const KuidIndex::Match match = mIndex.Find(kuid);
        std::vector<std::u16string> paths;
        std::vector<std::u16string> identities;
        const auto add = [&](const std::u16string& path, const std::u16string& identity)
        {
            if (std::find(identities.begin(), identities.end(), identity) != identities.end())
                return;
            paths.push_back(path);
            identities.push_back(identity);
        };
        const auto above = mFolder->IsRootFolder() ? mFolder : mFolder->ParentFolder();
        const std::u16string candidate = above->Path() + u"\\" + KuidFolderName(kuid) + u"\\config.txt";
        if (mFiles.FileExists(candidate))
            add(candidate, mFiles.FileIdentity(candidate));
        else if (match.Failure)
        {
            const auto failure = FromUtf8(match.Failure->Failure);
            mReport.Add(Code::AssetNotLoaded, place,
                        "the search for " + Quoted(kuid) + " ends at " +
                            Examples::Printable(failure.value_or(u"")) + andMore);
            return {};
        }
        for (const FoundConfig* const found : match.Configs)
            add(found->Path, found->Identity);

        if (paths.empty())
        {
            const bool isInOtherCase = !mIndex.Find(LowerCase(kuid)).Configs.empty();
            mReport.Add(Code::KuidNotFound, place,
                        "no asset " + Quoted(kuid) + " within two levels of folders from two above" +
                            (isInOtherCase ? ": to be found it must be written in small letters" : "") +
                            andMore);
            return {};
        }
        if (paths.size() > 1)
        {
            const std::size_t more = paths.size() - 2;
            mReport.Add(
                Code::KuidFoundTwice, place,
                Quoted(kuid) + " is " + QuotedFile(paths[0]) + ", but also " + QuotedFile(paths[1]) +
                    (more > 0 ? " and " + Examples::Number(static_cast<std::int64_t>(more)) + " more" : "") +
                    andMore);
        }
        return paths.front();
    }

private:
    FileSystem& mFiles;
    std::shared_ptr<Folder> mFolder;
    const KuidIndex& mIndex;
    Report& mReport;
};

} // namespace

std::vector<std::u16string> JudgeReferences(const std::u16string& config, const ConfigKeys& keys,
                                            FileSystem& files, KuidSearch& search, Report& report)
{
    std::vector<const ConfigLine*> firstUses;
    std::map<std::u16string_view, Tally> uses;
    for (const ConfigLine& reference : keys.References)
    {
        // A block of settings, whose name only begins like a reference, names no asset.
        if (reference.Value.empty() || reference.Value == u"{")
            continue;
        Tally& use = uses[reference.Value];
        if (use.Count() == 0)
            firstUses.push_back(&reference);
        use.Note(reference.FirstLine);
    }
    if (uses.empty())
        return {};
    std::vector<std::u16string> paths;
    ReferenceJudge judge(config, files, search, report);
    for (const ConfigLine* const reference : firstUses)
    {
        std::u16string path = judge.Judge(*reference, uses.at(reference->Value).AndMore());
        if (!path.empty())
            paths.push_back(std::move(path));
    }
    return paths;
}

} // namespace ZLMIM::Validate
