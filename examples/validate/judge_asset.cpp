#include "judge_asset.h"

#include "config_keys.h"
#include "judge_file.h"
#include "judge_references.h"
#include "lone_asset.h"
#include "skeleton.h"
#include "words.h"

#include "examples/asset.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <variant>

namespace ZLMIM::Validate
{
namespace
{

std::string Line(std::int64_t number) { return "line " + std::to_string(number); }

std::string EntryPlace(std::int64_t line, const std::u16string& name)
{
    return Line(line) + ", entry " + Quoted(name);
}

/// Judges the entries of a model's mesh table, beside the keys that they were made from.
class EntryJudge
{
public:
    EntryJudge(const ConfigKeys& keys, PathResolver& names, JudgedFiles& judged, Report& report)
        : mKeys(keys), mNames(names), mJudged(judged), mReport(report)
    {
    }

    /// `index` is the entry's place in the table, from 0. An entry whose mesh or animation has ended the load
    /// is the last.
    void Judge(const MeshEntry& entry, std::size_t index, const Examples::Outcome& outcome)
    {
        // The one entry of an asset without a mesh table has no keys.
        const MeshTableKeys noKeys = {{entry.Name, {}, mKeys.AssetFileName.FirstLine, 0}, {}, {}, {}, {}};
        const bool hasKeys =
            index < mKeys.Entries.size() && LowerCase(mKeys.Entries[index].Name.Key) == entry.Name;
        const MeshTableKeys& keys = hasKeys ? mKeys.Entries[index] : noKeys;
        const std::string place = EntryPlace(keys.Name.FirstLine, keys.Name.Key);
        const bool hasRaisedInAnim = !outcome.IsLoaded && !entry.anim->FileName.empty();
        const bool hasRaisedInMesh = !outcome.IsLoaded && !hasRaisedInAnim;

        const bool hasMesh = JudgeMeshOf(entry, keys, place, hasRaisedInMesh);
        const bool hasAnim = !hasRaisedInMesh && JudgeAnimOf(entry, keys, place, hasRaisedInAnim);
        if (!outcome.IsLoaded)
        {
            const auto& culprit = hasRaisedInAnim ? entry.anim->FileName : entry.Mesh->FileName;
            mReport.Add(Code::AssetNotLoaded, place,
                        "the load ends at " + QuotedFile(culprit) + ": " + Examples::Told(outcome) +
                            "; what follows isn't looked at");
            return;
        }
        if (hasMesh && hasAnim)
            JudgeTrees(entry, keys, place);
        JudgeAttachment(entry, keys);
    }

private:
    /// Whether it was read to its end.
    bool JudgeMeshOf(const MeshEntry& entry, const MeshTableKeys& keys, const std::string& place,
                     bool hasRaised)
    {
        const Mesh& mesh = *entry.Mesh;
        const bool isFallback = mKeys.Entries.empty();
        if (keys.Mesh.Value.empty() && !isFallback)
        {
            mReport.Add(Code::EntryWithoutMesh, place, "it has no mesh");
            return false;
        }
        const auto file = Locate(mesh.FileName, mNames);
        if (!file)
            mReport.Add(Code::FileMissing,
                        keys.Mesh.FirstLine > 0 ? EntryPlace(keys.Mesh.FirstLine, keys.Name.Key) : place,
                        MissingMesh(keys.Mesh.Value, mesh.FileName));
        else if (hasRaised)
            JudgeMeshFile(mesh.FileName, *file, mNames, mJudged);
        else
            JudgeMesh(mesh, {IsLoaded(mesh), {}, {}}, *file, mNames, mJudged);
        return file && !hasRaised && IsLoaded(mesh);
    }

    /// `file` is what the model has made of the value.
    static std::string MissingMesh(const std::u16string& value, const std::u16string& file)
    {
        if (!LowerCase(value).ends_with(u".lm"))
            return "no mesh " + QuotedFile(file);
        if (file.ends_with(u".lm"))
            return "no list of levels " + QuotedFile(file + u".txt");
        if (file.ends_with(u'\\'))
            return "no mesh of level 1 in the list of levels";
        return "no mesh " + QuotedFile(file) + ", which is level 1 of the list";
    }

    bool JudgeAnimOf(const MeshEntry& entry, const MeshTableKeys& keys, const std::string& place,
                     bool hasRaised)
    {
        const Anim& anim = *entry.anim;
        if (anim.FileName.empty())
            return false;
        const auto file = Locate(anim.FileName, mNames);
        if (!file)
        {
            mReport.Add(Code::FileMissing,
                        keys.Anim.FirstLine > 0 ? EntryPlace(keys.Anim.FirstLine, keys.Name.Key) : place,
                        "no animation " + QuotedFile(anim.FileName));
            return false;
        }
        if (hasRaised)
        {
            JudgeAnimFile(anim.FileName, *file, mNames, mJudged);
            return false;
        }
        const Examples::Outcome outcome = OutcomeOf(anim, mNames);
        JudgeAnim(anim, outcome, *file, mJudged);
        return outcome.IsLoaded;
    }

    void JudgeTrees(const MeshEntry& entry, const MeshTableKeys& keys, const std::string& place)
    {
        if (!entry.Mesh->RootBone)
        {
            // An `anim.kin` goes to all entries of its folder, also to those that have no use for it.
            if (keys.Anim.FirstLine > 0)
                mReport.Add(Code::AnimationTree, EntryPlace(keys.Anim.FirstLine, keys.Name.Key),
                            "the mesh has no skeleton for the animation");
            return;
        }
        const std::string difference = TreeDifference(*entry.Mesh->RootBone, *entry.anim->RootBone);
        if (!difference.empty())
            mReport.Add(Code::AnimationTree, place, "the animation isn't made for the mesh: " + difference);
    }

    void JudgeAttachment(const MeshEntry& entry, const MeshTableKeys& keys)
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
                            [&](const MeshTableKeys& other) { return other.Name.Key == wanted; });
            mReport.Add(Code::AttParentUnknown, EntryPlace(keys.AttParent.FirstLine, keys.Name.Key),
                        "no entry " + Quoted(keys.AttParent.Value) + " above" +
                            (isBelow ? ", only below" : ""));
        }
        // What a mesh that isn't loaded would have is told with that mesh.
        else if (!entry.Att && IsLoaded(*parent->Mesh))
            mReport.Add(
                Code::AttUnknown,
                EntryPlace((keys.Att.FirstLine > 0 ? keys.Att : keys.AttParent).FirstLine, keys.Name.Key),
                keys.Att.Value.empty()
                    ? "it names no attachment point of " + Quoted(parent->Name)
                    : "no attachment point " + Quoted(keys.Att.Value) + " on " + Quoted(parent->Name));
    }

    const ConfigKeys& mKeys;
    PathResolver& mNames;
    JudgedFiles& mJudged;
    Report& mReport;
};

/// Judges the model, as far as its load has come.
void JudgeModel(const ZLMModel& model, const Examples::Outcome& outcome, const ConfigKeys& keys,
                PathResolver& names, JudgedFiles& judged, Report& report)
{
    const auto table = model.MeshTable();
    // What meshes and animations raise; the last entry is the one that was being loaded.
    const bool isOfAnEntry = !outcome.IsLoaded && outcome.Raised != "FileSystemError" && table->Count() > 0;
    if (!outcome.IsLoaded && !isOfAnEntry)
    {
        if (keys.Trouble.empty())
            report.Add(Code::NotLoaded, "", Examples::Told(outcome));
        else
            report.Add(Code::NotLoaded, Line(keys.TroubleLine), keys.Trouble);
    }
    EntryJudge judge(keys, names, judged, report);
    for (std::size_t index = 0; const auto& entry : table->Entries())
    {
        ++index;
        const bool isLast = index == table->Entries().size();
        judge.Judge(*entry, index - 1, isLast && isOfAnEntry ? outcome : Examples::Outcome{true, {}, {}});
    }
    if (keys.OpenEntry)
        report.Add(Code::EntryLost, EntryPlace(keys.OpenEntry->Name.FirstLine, keys.OpenEntry->Name.Key),
                   "the file ends before its closing }");
}

void JudgeFallback(const std::u16string& name, const ConfigKeys& keys, PathResolver& names, Report& report)
{
    const ConfigLine& fallback = keys.AssetFileName;
    if (!keys.Entries.empty() || fallback.Value.empty())
        return;
    const std::u16string mesh = FolderOf(name) + fallback.Value + u".im";
    if (!Locate(mesh, names))
        report.Add(Code::FileMissing, Line(fallback.FirstLine) + ", asset-filename",
                   "no mesh " + QuotedFile(mesh) + ", and no mesh table");
}

} // namespace

std::vector<std::u16string> JudgeAsset(const std::u16string& name, const LocatedFile& file,
                                       const std::shared_ptr<PathResolver>& names, JudgedFiles& judged,
                                       KuidSearch& search)
{
    Report report;
    std::vector<std::u16string> references;
    DiskFileSystem files(names);
    const Examples::Outcome outcome = Examples::Attempt(
        [&]
        {
            const ConfigKeys keys = ReadConfigKeys(*files.OpenTextFile(name));
            const Examples::Asset asset = LoadLoneAsset(name, keys, names);
            const auto& model = *std::get<std::shared_ptr<ZLMModel>>(asset.Object);
            JudgeModel(model, asset.Outcome, keys, *names, judged, report);
            JudgeFallback(name, keys, *names, report);
            references = JudgeReferences(name, keys, files, search, report);
            return true;
        });
    if (!outcome.IsLoaded)
        report.Add(Code::NotLoaded, "", Examples::Told(outcome));
    judged.Store(file.Key, std::move(report));
    return references;
}

} // namespace ZLMIM::Validate
