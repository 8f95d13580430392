#include "check_asset.h"

#include "check_file.h"
#include "check_references.h"
#include "config_check.h"
#include "config_keys.h"
#include "config_text.h"
#include "skeleton.h"
#include "spelling.h"

#include "tools/common/asset.h"
#include "tools/common/paths.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/line_reader.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/load_budget.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>
#include <variant>

namespace ZLMIM::Validate
{
namespace
{

Place EntryPlace(std::int64_t line, const std::u16string& name) { return {line, name}; }

/// The names of the files in a folder.
std::vector<std::u16string> FilesIn(const NativePath& folder, PathResolver& names)
{
    std::vector<std::u16string> files;
    for (const FolderEntry& entry :
         names.List(folder.ends_with(kNativeSeparator) ? folder : folder + kNativeSeparator))
        if (!entry.isFolder && !entry.isWindows1252)
            files.push_back(entry.lowerName);
    return files;
}

/// A hint at the file that a name in the object model's form probably means.
std::string FileHint(std::u16string name, PathResolver& names)
{
    std::replace(name.begin(), name.end(), u'/', u'\\');
    const std::u16string folder = Tools::FolderOf(name);
    const auto found = names.Find(folder, FoundFile::Kind::Folder);
    if (!found)
        return "; there is no folder " + QuotedFile(folder);
    const NativePath nativeFolder = found->nativePath;
    return DidYouMean(Tools::BaseName(name), FilesIn(nativeFolder, names));
}

/// Checks the entries of a model's mesh table against the keys that they were made from.
class EntryChecker
{
public:
    EntryChecker(const ConfigKeys& keys, PathResolver& names, CheckedFiles& checked, Report& report)
        : mKeys(keys), mNames(names), mChecked(checked), mReport(report)
    {
    }

    /// `index` is the entry's place in the table, from 0. If its mesh or animation has ended the load, it's
    /// the last one, and `outcome` is that of the load.
    void Check(const MeshEntry& entry, std::size_t index, const Tools::Outcome& outcome)
    {
        // The one entry of an asset without a mesh table has no keys.
        const MeshTableKeys noKeys = {{entry.Name, {}, mKeys.AssetFileName.FirstLine, 0}, {}, {}, {}, {}};
        const bool hasKeys =
            index < mKeys.Entries.size() && LowerCase(mKeys.Entries[index].Name.Key) == entry.Name;
        const MeshTableKeys& keys = hasKeys ? mKeys.Entries[index] : noKeys;
        const Place place = EntryPlace(keys.Name.FirstLine, keys.Name.Key);
        const bool hasThrownInAnim = !outcome.IsLoaded && !entry.anim->FileName.empty();
        const bool hasThrownInMesh = !outcome.IsLoaded && !hasThrownInAnim;

        const bool hasMesh = CheckMeshOf(entry, keys, place, hasThrownInMesh);
        const bool hasAnim = !hasThrownInMesh && CheckAnimOf(entry, keys, place, hasThrownInAnim);
        if (!outcome.IsLoaded)
        {
            const auto& culprit = hasThrownInAnim ? entry.anim->FileName : entry.Mesh->FileName;
            const bool isOfMemory = outcome.Thrown == "OutOfMemory";
            mReport.Add(Code::AssetNotLoaded, place,
                        "the load of the asset ends here: " +
                            (isOfMemory ? "there is no memory for " + QuotedFile(culprit)
                                        : QuotedFile(culprit) + " is " + Tools::Describe(outcome)));
            return;
        }
        if (hasMesh && hasAnim)
            CheckTrees(entry, keys, place);
        CheckAttachment(entry, keys);
    }

private:
    /// Whether it was read to its end.
    bool CheckMeshOf(const MeshEntry& entry, const MeshTableKeys& keys, const Place& place, bool hasThrown)
    {
        const Mesh& mesh = *entry.Mesh;
        const bool isFallback = mKeys.Entries.empty();
        if (keys.Mesh.Value.empty() && !isFallback)
        {
            mReport.Add(Code::EntryWithoutMesh,
                        keys.Mesh.FirstLine > 0 ? EntryPlace(keys.Mesh.FirstLine, keys.Name.Key) : place,
                        keys.Mesh.FirstLine > 0 ? "mesh has no value" : "it has no mesh");
            return false;
        }
        const auto file = Locate(mesh.FileName, mNames);
        if (!file)
            mReport.Add(Code::FileMissing,
                        keys.Mesh.FirstLine > 0 ? EntryPlace(keys.Mesh.FirstLine, keys.Name.Key) : place,
                        MissingMesh(keys.Mesh.Value, mesh.FileName, mNames));
        else if (hasThrown)
            CheckFile<Mesh>(mesh.FileName, *file, mNames, mChecked);
        else
            CheckLoaded(mesh, {Tools::HasChunks(mesh), {}, {}, {}}, *file, mNames, mChecked);
        return file && !hasThrown && Tools::HasChunks(mesh);
    }

    /// `value` is the value of the key `mesh`, `file` the name that the model made from it.
    static std::string MissingMesh(const std::u16string& value, const std::u16string& file,
                                   PathResolver& names)
    {
        if (!LowerCase(value).ends_with(u".lm"))
            return "no mesh " + QuotedFile(file) + FileHint(file, names);
        if (file.ends_with(u".lm"))
            return "no list of levels " + QuotedFile(file + u".txt") + FileHint(file + u".txt", names);
        if (file.ends_with(u'\\'))
            return "no mesh of level 1 in the list of levels";
        return "no mesh " + QuotedFile(file) + ", which is level 1 of the list" + FileHint(file, names);
    }

    bool CheckAnimOf(const MeshEntry& entry, const MeshTableKeys& keys, const Place& place, bool hasThrown)
    {
        const Anim& anim = *entry.anim;
        if (anim.FileName.empty())
            return false;
        const auto file = Locate(anim.FileName, mNames);
        if (!file)
        {
            mReport.Add(Code::FileMissing,
                        keys.Anim.FirstLine > 0 ? EntryPlace(keys.Anim.FirstLine, keys.Name.Key) : place,
                        "no animation " + QuotedFile(anim.FileName) + FileHint(anim.FileName, mNames));
            return false;
        }
        if (hasThrown)
        {
            CheckFile<Anim>(anim.FileName, *file, mNames, mChecked);
            return false;
        }
        const Tools::Outcome outcome = OutcomeOf(anim, mNames);
        CheckLoaded(anim, outcome, *file, mNames, mChecked);
        return outcome.IsLoaded;
    }

    void CheckTrees(const MeshEntry& entry, const MeshTableKeys& keys, const Place& place)
    {
        if (!entry.Mesh->RootBone)
        {
            // All entries get the `anim.kin` of the folder, needed or not.
            if (keys.Anim.FirstLine > 0)
                mReport.Add(Code::AnimationTree, EntryPlace(keys.Anim.FirstLine, keys.Name.Key),
                            "the mesh has no skeleton for the animation");
            return;
        }
        const std::string difference = TreeDifference(*entry.Mesh->RootBone, *entry.anim->RootBone);
        if (!difference.empty())
            mReport.Add(Code::AnimationTree, place, "the animation isn't made for the mesh: " + difference);
    }

    void CheckAttachment(const MeshEntry& entry, const MeshTableKeys& keys)
    {
        if (keys.AttParent.Value.empty())
        {
            if (!keys.Att.Value.empty())
                mReport.Add(Code::AttUnknown, EntryPlace(keys.Att.FirstLine, keys.Name.Key),
                            "att " + Quoted(keys.Att.Value) + " without an att-parent");
            return;
        }
        const auto parent = entry.AttParent();
        if (!parent)
        {
            const std::u16string wanted = LowerCase(keys.AttParent.Value);
            const bool isBelow =
                std::any_of(mKeys.Entries.begin(), mKeys.Entries.end(),
                            [&](const MeshTableKeys& other) { return LowerCase(other.Name.Key) == wanted; });
            mReport.Add(Code::AttParentUnknown, EntryPlace(keys.AttParent.FirstLine, keys.Name.Key),
                        "no entry " + Quoted(keys.AttParent.Value) + " above" +
                            (isBelow ? ", only below" : DidYouMean(keys.AttParent.Value, EntryNames())));
        }
        else if (parent.get() == &entry)
        {
            mReport.Add(Code::AttParentUnknown, EntryPlace(keys.AttParent.FirstLine, keys.Name.Key),
                        "the entry names itself, so it hangs on nothing");
        }
        // A mesh that isn't loaded is reported separately.
        else if (!entry.Att && Tools::HasChunks(*parent->Mesh))
            mReport.Add(
                Code::AttUnknown,
                EntryPlace((keys.Att.FirstLine > 0 ? keys.Att : keys.AttParent).FirstLine, keys.Name.Key),
                keys.Att.Value.empty()
                    ? "it names no attachment point of " + Quoted(parent->Name)
                    : "no attachment point " + Quoted(keys.Att.Value) + " on " + Quoted(parent->Name) +
                          DidYouMean(keys.Att.Value, PointNames(*parent->Mesh)));
    }

    [[nodiscard]] std::vector<std::u16string> EntryNames() const
    {
        std::vector<std::u16string> names;
        for (const MeshTableKeys& entry : mKeys.Entries)
            names.push_back(entry.Name.Key);
        return names;
    }

    static std::vector<std::u16string> PointNames(const Mesh& mesh)
    {
        std::vector<std::u16string> names;
        for (const auto& point : mesh.Attachments->Entries())
            names.push_back(point->Name);
        return names;
    }

    const ConfigKeys& mKeys;
    PathResolver& mNames;
    CheckedFiles& mChecked;
    Report& mReport;
};

/// Checks the model as far as it was loaded.
void CheckModel(const ZLMModel& model, const Tools::Outcome& outcome, const ConfigKeys& keys,
                PathResolver& names, CheckedFiles& checked, Report& report)
{
    const auto table = model.MeshTable();
    // Meshes and animations throw these; then the last entry is the one that was being loaded.
    const bool isOfAnEntry = !outcome.IsLoaded && outcome.Thrown != "FileSystemError" && table->Count() > 0;
    if (!outcome.IsLoaded && !isOfAnEntry)
    {
        if (keys.Error.empty())
            report.Add(Code::NotLoaded, {}, Tools::Describe(outcome));
        else
            report.Add(Code::NotLoaded, {keys.ErrorLine}, keys.Error);
    }
    EntryChecker checker(keys, names, checked, report);
    for (std::size_t index = 0; const auto& entry : table->Entries())
    {
        ++index;
        const bool isLast = index == table->Entries().size();
        checker.Check(*entry, index - 1, isLast && isOfAnEntry ? outcome : Tools::Outcome{true, {}, {}, {}});
    }
    if (keys.OpenEntry)
        report.Add(Code::EntryLost, EntryPlace(keys.OpenEntry->Name.FirstLine, keys.OpenEntry->Name.Key),
                   "the file ends before its closing }");
}

void CheckFallback(const std::u16string& name, const ConfigKeys& keys, PathResolver& names, Report& report)
{
    const ConfigLine& fallback = keys.AssetFileName;
    if (!keys.Entries.empty() || fallback.Value.empty())
        return;
    const std::u16string mesh = Tools::FolderOf(name) + fallback.Value + u".im";
    if (!Locate(mesh, names))
        report.Add(Code::FileMissing, {.Line = fallback.FirstLine, .Detail = "asset-filename"},
                   "no mesh " + QuotedFile(mesh) + ", and no mesh table" + FileHint(mesh, names));
}

/// Kinds of assets that are always drawn.
bool IsDrawnKind(std::u16string_view kind)
{
    return kind == u"traincar" || kind == u"bogey" || kind == u"pantograph";
}

/// Reports a config that loads no mesh, although it names some, or some are beside an asset that needs one.
/// Others, such as libraries, may do without.
void CheckAnyMesh(const std::u16string& name, ConfigText text, const ConfigKeys& keys, PathResolver& names,
                  Report& report)
{
    if (!keys.Entries.empty() || keys.OpenEntry || !keys.AssetFileName.Value.empty() || !keys.Error.empty())
        return;
    const std::u16string folder = Tools::FolderOf(name);
    std::u16string kind;
    LoadBudget budget;
    LineReader lines(text, budget);
    ConfigLine line;
    while (!lines.AtEndOfStream())
    {
        ReadConfigLine(lines, line);
        const std::u16string value = LowerCase(Trim(line.Value));
        const bool isMesh = value.ends_with(u".im") && Locate(folder + value, names);
        const bool isList = value.ends_with(u".lm") && Locate(folder + value + u".txt", names);
        if (isMesh || isList)
            return report.Add(Code::NoMesh, {line.FirstLine},
                              QuotedFile(line.Value) + " isn't loaded, and no other mesh: no mesh table or "
                                                       "asset-filename of the config names one");
        if (line.Key == u"kind" && kind.empty())
            kind = value;
    }
    if (!kind.empty() && !IsDrawnKind(kind))
        return;
    const auto found = names.Find(folder.empty() ? u"." : folder, FoundFile::Kind::Folder);
    if (!found)
        return;
    const NativePath nativeFolder = found->nativePath;
    for (const std::u16string& file : FilesIn(nativeFolder, names))
        if (file.ends_with(u".im"))
            return report.Add(Code::NoMesh, {},
                              "the config has no mesh table, so it loads no mesh, although " +
                                  QuotedFile(file) + " is beside it");
}

/// The first line that is misread because of a mistake: that of the entry which contains it.
std::int64_t FirstMisread(std::int64_t mistake, const ConfigKeys& keys)
{
    if (mistake == std::numeric_limits<std::int64_t>::max())
        return mistake;
    std::int64_t line = mistake;
    for (const MeshTableKeys& entry : keys.Entries)
        if (entry.Name.FirstLine <= mistake)
            line = entry.Name.FirstLine;
    return keys.OpenEntry ? std::min(line, keys.OpenEntry->Name.FirstLine) : line;
}

/// Moves the findings of `from` that are valid despite the mistake in that line.
void AddBefore(std::int64_t mistake, Report& from, Report& report)
{
    for (Finding& finding : from.Findings())
    {
        // After the mistake, the file is misread, so findings there may be wrong.
        const bool isBefore = finding.Place.Line == 0
                                  ? finding.Code != Code::NotLoaded || !report.Findings().size()
                                  : finding.Place.Line < mistake;
        if (isBefore || mistake == std::numeric_limits<std::int64_t>::max())
            report.Findings().push_back(std::move(finding));
    }
}

} // namespace

std::vector<std::u16string> CheckAsset(const std::u16string& name, const LocatedFile& file,
                                       const std::shared_ptr<PathResolver>& names, CheckedFiles& checked,
                                       KuidSearch& search)
{
    Report report;
    std::vector<std::u16string> references;
    const Tools::Outcome outcome = Tools::Attempt(
        [&]
        {
            const std::string bytes = ReadBytes(file.Name);
            if (!CheckEncoding(bytes, report))
                return true;
            ConfigText lines(bytes);
            const std::int64_t mistake = CheckConfig(lines, report);
            ConfigText text(bytes);
            const ConfigKeys keys = ReadConfigKeys(text);
            const Tools::Asset asset =
                Tools::LoadAsset({Tools::Kind::Model, name}, names, Tools::References::Skip);
            const auto& model = *std::get<std::shared_ptr<ZLMModel>>(asset.Object);
            Report ofModel;
            CheckModel(model, asset.Outcome, keys, *names, checked, ofModel);
            CheckFallback(name, keys, *names, ofModel);
            DiskFileSystem files(names);
            if (std::none_of(report.Findings().begin(), report.Findings().end(),
                             [](const Finding& finding) { return finding.Code == Code::ConfigUnknown; }))
            {
                const std::u16string kuid = CheckKuid(ConfigText(bytes), file, checked, ofModel);
                for (FoundReference& reference :
                     CheckReferences(name, kuid, keys, text, files, search, ofModel))
                {
                    if (const auto target = Locate(reference.Config, *names))
                        checked.NoteReference(file, *target, std::move(reference.Place));
                    references.push_back(std::move(reference.Config));
                }
                if (mistake == std::numeric_limits<std::int64_t>::max() &&
                    std::none_of(report.Findings().begin(), report.Findings().end(),
                                 [](const Finding& finding) { return finding.Code == Code::MeshTableEmpty; }))
                    CheckAnyMesh(name, ConfigText(bytes), keys, *names, ofModel);
            }
            AddBefore(FirstMisread(mistake, keys), ofModel, report);
            return true;
        });
    if (!outcome.IsLoaded)
        report.Add(Code::NotLoaded, {}, Tools::Describe(outcome));
    checked.Store(file.Key, std::move(report));
    return references;
}

} // namespace ZLMIM::Validate
