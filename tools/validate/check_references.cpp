#include "check_references.h"

#include "located_file.h"

#include "spelling.h"
#include "tally.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/folder_walk.h"
#include "zlmim/config/line_reader.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/load_budget.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

/// Whether the line after a key opens a block.
bool IsBlock(const ConfigLine& key, const ConfigText& text)
{
    return key.Value.empty() && key.LastLine < text.LineCount() && Trim(text.Line(key.LastLine + 1)) == u"{";
}

bool IsNumber(std::u16string_view text)
{
    const std::u16string_view digits = text.substr(text.starts_with(u'-') ? 1 : 0);
    return !digits.empty() && digits.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

/// Whether a text has the form of a kuid: parts with colons between, in angle brackets. After `kuid` two
/// numbers are expected, after `kuid2` three.
bool IsKuid(std::u16string_view text)
{
    if (text.size() < 3 || text.front() != u'<' || text.back() != u'>')
        return false;
    text = text.substr(1, text.size() - 2);
    if (text.find_first_of(u" \t<>") != std::u16string_view::npos)
        return false;
    std::vector<std::u16string_view> parts;
    while (true)
    {
        const std::size_t end = text.find(u':');
        parts.push_back(text.substr(0, end));
        if (end == std::u16string_view::npos)
            break;
        text.remove_prefix(end + 1);
    }
    if (parts.size() < 2 || std::any_of(parts.begin(), parts.end(), [](auto part) { return part.empty(); }))
        return false;
    const std::u16string prefix = LowerCase(parts[0]);
    if (prefix != u"kuid" && prefix != u"kuid2")
        return true;
    return parts.size() == (prefix == u"kuid" ? 3 : 4) &&
           std::all_of(parts.begin() + 1, parts.end(), IsNumber);
}

/// Describes a text that should be a kuid.
std::string NoKuid(const std::u16string& text)
{
    return Quoted(text) + " isn't a kuid, which looks like <kuid:1:2> or <kuid2:1:2:3>";
}

class ReferenceChecker
{
public:
    ReferenceChecker(const std::u16string& config, FileSystem& files, KuidSearch& search, Report& report)
        : mFiles(files), mFolder(files.GetFolder(Tools::FolderOf(config))),
          mIndex(search.From(mFolder, files)), mReport(report)
    {
    }

    /// Returns the config that a model loads; empty if it finds no config.
    std::u16string Check(const ConfigLine& reference, const std::string& andMore)
    {
        const std::u16string& kuid = reference.Value;
        const Place place = {.Line = reference.FirstLine, .Detail = Tools::Printable(reference.Key)};
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
            mReport.Add(Code::AssetNotLoaded, place,
                        "the search for " + Quoted(kuid) + " ends before it is found, at " +
                            QuotedFile(match.Failure->Path) + ": " + match.Failure->Failure + andMore);
            return {};
        }
        for (const FoundConfig* const found : match.Configs)
            add(found->Path, found->Identity);

        if (paths.empty())
        {
            const bool isInOtherCase = !mIndex.Find(LowerCase(kuid)).Configs.empty();
            const auto start = StartFolder(mFolder);
            mReport.Add(Code::KuidNotFound, place,
                        "no asset " + Quoted(kuid) + " in " +
                            QuotedFile(above->Path() + u"\\" + KuidFolderName(kuid)) +
                            " or in the folders up to two levels below " + QuotedFile(start->Path() + u"\\") +
                            (isInOtherCase ? "; the kuid must be written in small letters" : "") + andMore);
            return {};
        }
        if (paths.size() > 1)
        {
            const std::size_t more = paths.size() - 2;
            mReport.Add(
                Code::KuidFoundTwice, place,
                Quoted(kuid) + " is " + QuotedFile(paths[0]) + ", but also " + QuotedFile(paths[1]) +
                    (more > 0 ? " and " + Tools::Number(static_cast<std::int64_t>(more)) + " more" : "") +
                    andMore);
            mReport.Findings().back().Kuid = kuid;
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

std::u16string CheckKuid(ConfigText text, const LocatedFile& file, CheckedFiles& checked, Report& report)
{
    LoadBudget budget;
    LineReader lines(text, budget);
    ConfigLine line;
    std::u16string kuid;
    std::int64_t number = 0;
    try
    {
        while (!lines.AtEndOfStream())
        {
            ReadConfigLine(lines, line);
            if (line.Key != u"kuid")
                continue;
            kuid = LowerCase(Trim(line.Value));
            number = line.FirstLine;
        }
    }
    catch (const FileSystemError&)
    {
        // An open quotation mark, which is reported separately.
    }
    if (number == 0)
        report.Add(Code::KuidMissing, {}, "the asset has no kuid, so nothing can refer to it");
    else if (!IsKuid(kuid))
        report.Add(Code::KuidMalformed, {number}, NoKuid(kuid));
    else
        checked.NoteKuid(kuid, file, number);
    return kuid;
}

std::vector<FoundReference> CheckReferences(const std::u16string& config, const std::u16string& kuid,
                                            const ConfigKeys& keys, const ConfigText& text, FileSystem& files,
                                            KuidSearch& search, Report& report)
{
    std::vector<const ConfigLine*> firstUses;
    std::map<std::u16string_view, Tally> uses;
    for (const ConfigLine& reference : keys.References)
    {
        // A block of settings may have a name that begins like a reference.
        if (reference.Value == u"{" || IsBlock(reference, text))
            continue;
        const Place place = {.Line = reference.FirstLine, .Detail = Tools::Printable(reference.Key)};
        if (reference.Value.empty())
        {
            report.Add(Code::ReferenceEmpty, place, "it names no asset");
            continue;
        }
        if (!IsKuid(reference.Value))
        {
            report.Add(Code::KuidMalformed, place, NoKuid(reference.Value));
            continue;
        }
        if (LowerCase(reference.Value) == kuid)
        {
            report.Add(Code::ReferenceToItself, place, "the asset refers to itself");
            continue;
        }
        Tally& use = uses[reference.Value];
        if (use.Count() == 0)
            firstUses.push_back(&reference);
        use.Note(reference.FirstLine);
    }
    if (uses.empty())
        return {};
    std::vector<FoundReference> found;
    ReferenceChecker checker(config, files, search, report);
    for (const ConfigLine* const reference : firstUses)
    {
        std::u16string path = checker.Check(*reference, uses.at(reference->Value).AndMore());
        if (!path.empty())
            found.push_back({{.Line = reference->FirstLine, .Detail = Tools::Printable(reference->Key)},
                             std::move(path)});
    }
    return found;
}

} // namespace ZLMIM::Validate
