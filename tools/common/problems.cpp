#include "tools/common/problems.h"

#include "tools/common/assembly.h"
#include "tools/common/config_keys.h"
#include "tools/common/paths.h"
#include "tools/common/text.h"

#include "zlmim/model/text.h"
#include "zlmim/reader/load_budget.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ZLMIM::Tools
{
namespace
{

/// Why a file doesn't load; empty if it does.
template <class Object>
std::string FailureOf(const std::u16string& file, PathResolver& names)
{
    Object again;
    LoadBudget budget;
    const Outcome outcome = Attempt([&] { return again.Load(file, names, budget); });
    return Failure(again, outcome, names);
}

/// Whether an animation may not have been read to its end. One of its slots may be empty: there is one more
/// than frames.
bool IsSuspect(const Anim& anim)
{
    const auto isEmpty = [](const Keyframe& frame) { return frame == Keyframe(); };
    return !anim.RootBone || std::ranges::count_if(anim.RootBone->Frames(), isEmpty) > 1;
}

class Finder
{
public:
    Finder(const std::shared_ptr<PathResolver>& names, References references)
        : mNames(names), mReferences(references)
    {
    }

    void FindIn(const ZLMModel& asset, const Outcome& outcome, const std::u16string& config)
    {
        mHasThrown = !outcome.Thrown.empty();
        const ConfigKeys keys = ReadConfigKeys(config, mNames);
        const std::string where = ShownFile(config) + ": ";
        AddModel(asset, keys);
        if (!outcome.IsLoaded)
        {
            // The file that ended the load is usually that of an entry, which is reported by now.
            const auto isCause = [&](const Problem& problem)
            {
                return problem.Entry &&
                       (outcome.File.empty() || problem.Entry->Mesh->FileName == outcome.File ||
                        problem.Entry->anim->FileName == outcome.File);
            };
            if (std::ranges::none_of(mProblems, isCause))
                mProblems.push_back({ProblemPart::File, &asset, nullptr,
                                     outcome.File.empty() ? where : std::string(),
                                     Failure(asset, outcome, *mNames)});
            return;
        }
        if (IsEmpty(asset) && keys.Bogeys.empty() && keys.Pantograph.FirstLine == 0)
            mProblems.push_back({ProblemPart::File, &asset, nullptr, where,
                                 keys.HasNul     ? "the config isn't text with one byte per character"
                                 : !keys.HasText ? "the config is empty"
                                                 : "the config names neither an asset nor a mesh"});
    }

    std::vector<Problem> Take() { return std::move(mProblems); }

private:
    void AddModel(const ZLMModel& model, const ConfigKeys& keys)
    {
        if (!mSeen.insert(&model).second)
            return;
        mOpen.push_back(model.kuid());
        AddEntries(model, keys);
        const auto table = model.MeshTable();
        if ((!table || table->Count() == 0) && !model.AssetFileName.empty() && !keys.File.empty())
            mProblems.push_back(
                {ProblemPart::File, &model, nullptr, At(keys, keys.AssetFileName) + "asset-filename: ",
                 "there is no file " + ShownFile(FolderOf(keys.File) + model.AssetFileName + u".im")});
        if (mReferences == References::Follow)
        {
            const std::int32_t count = model.Bogies && model.BogieNames
                                           ? std::min(model.Bogies->Count(), model.BogieNames->Count())
                                           : 0;
            for (std::int32_t i = 1; i <= count; ++i)
            {
                const auto number = static_cast<std::size_t>(i - 1);
                AddReference(model.Bogies->Item(i).get(), model.BogieNames->Item(i),
                             number < keys.Bogeys.size() ? keys.Bogeys[number] : ConfigLine(), keys);
            }
            AddReference(model.Pantograph.get(), u"pantograph", keys.Pantograph, keys);
        }
        mOpen.pop_back();
    }

    void AddReference(const ZLMModel* model, const std::u16string& key, const ConfigLine& line,
                      const ConfigKeys& keys)
    {
        if (!model || line.Value == u"{") // a block
            return;
        if (!IsEmpty(*model))
        {
            AddModel(*model, ConfigOf(*model));
            return;
        }
        std::string what =
            "no asset " + (line.Value.empty() ? "" : Printable(line.Value) + " ") + "was found";
        if (line.FirstLine > 0 && line.Value.empty())
            what = "it has no kuid";
        else if (std::ranges::find(mOpen, LowerCase(line.Value)) != mOpen.end())
            what = Printable(line.Value) + " is an asset that this reference is in";
        mProblems.push_back(
            {ProblemPart::File, model, nullptr, At(keys, line) + Printable(key) + ": ", what});
    }

    void AddEntries(const ZLMModel& model, const ConfigKeys& keys)
    {
        const auto table = model.MeshTable();
        if (!table)
            return;
        mLast = table->Count() > 0 ? table->Item(table->Count()).get() : nullptr;
        std::set<std::u16string> above;
        for (std::size_t i = 0; i < table->Entries().size(); ++i)
        {
            const auto& entry = table->Entries()[i];
            if (!entry)
                continue;
            above.insert(entry->Name);
            AddEntry(model, *entry, keys, i < keys.Entries.size() ? keys.Entries[i] : MeshTableKeys(), above);
        }
    }

    /// `above` are the names of the entries so far, this one included.
    void AddEntry(const ZLMModel& model, const MeshEntry& entry, const ConfigKeys& config,
                  const MeshTableKeys& keys, const std::set<std::u16string>& above)
    {
        const auto add =
            [&](ProblemPart part, const ConfigLine& line, const std::u16string& file, const std::string& what)
        {
            const ConfigLine& at = line.FirstLine > 0 ? line : keys.Name;
            if (!what.empty())
                mProblems.push_back({part, &model, &entry,
                                     At(config, at) + "entry " + Quoted(entry.Name) + ": " +
                                         (file.empty() ? "" : ShownFile(file) + ": "),
                                     what});
        };
        const bool isLast = mHasThrown && &entry == mLast;
        if (entry.Mesh && entry.Mesh->FileName.empty())
            add(ProblemPart::Mesh, keys.Mesh, {}, "it has no mesh");
        else if (entry.Mesh && (!HasChunks(*entry.Mesh) || !entry.Mesh->ErrorMessage.empty() || isLast))
            add(ProblemPart::Mesh, keys.Mesh, entry.Mesh->FileName,
                FailureOf<Mesh>(entry.Mesh->FileName, *mNames));
        if (entry.anim && !entry.anim->FileName.empty() && (IsSuspect(*entry.anim) || isLast))
            add(ProblemPart::Anim, keys.Anim, entry.anim->FileName,
                FailureOf<Anim>(entry.anim->FileName, *mNames));

        const std::u16string parent = LowerCase(keys.AttParent.Value);
        if (parent.empty() || isLast)
            return;
        if (!above.contains(parent))
            add(ProblemPart::Place, keys.AttParent, {},
                "att-parent: no entry " + Quoted(parent) + " above it");
        else if (keys.Att.Value.empty())
            add(ProblemPart::Place, keys.AttParent, {},
                "it has no att, the attachment point of " + Quoted(parent));
        else if (const auto attParent = entry.AttParent(); !entry.Att && attParent)
            add(ProblemPart::Place, keys.Att, {},
                "att: no attachment point " + Quoted(keys.Att.Value) + " in entry " + Quoted(parent) +
                    (HasChunks(*attParent->Mesh) ? "" : ", whose mesh isn't loaded"));
    }

    /// The config of an asset that was referred to, which its model doesn't name: the nearest one above its
    /// meshes that has its entries. Empty if there is none.
    ConfigKeys ConfigOf(const ZLMModel& model)
    {
        const auto table = model.MeshTable();
        const auto hasMesh = [](const auto& entry)
        { return entry && entry->Mesh && !entry->Mesh->FileName.empty(); };
        const auto entries = table ? table->Entries() : std::span<const std::shared_ptr<MeshEntry>>();
        const auto found = std::ranges::find_if(entries, hasMesh);
        if (found == entries.end())
            return {};
        std::u16string path = (*found)->Mesh->FileName;
        for (std::size_t end = path.rfind(u'\\'); end != std::u16string::npos; end = path.rfind(u'\\'))
        {
            path.resize(end);
            const std::u16string config = path + u"\\config.txt";
            if (!mNames->Find(config, FoundFile::Kind::File))
                continue;
            ConfigKeys keys = ReadConfigKeys(config, mNames);
            const auto isSame = [](const MeshTableKeys& a, const auto& b)
            { return b && a.Name.Key == b->Name; };
            const bool isFallback = keys.Entries.empty() && keys.AssetFileName.Value == model.AssetFileName;
            if (isFallback || (keys.Entries.size() >= entries.size() &&
                               std::equal(entries.begin(), entries.end(), keys.Entries.begin(),
                                          [&](const auto& b, const auto& a) { return isSame(a, b); })))
                return keys;
        }
        return {};
    }

    static std::string At(const ConfigKeys& config, const ConfigLine& line)
    {
        if (config.File.empty())
            return {};
        return ShownFile(config.File) + (line.FirstLine > 0 ? ":" + std::to_string(line.FirstLine) : "") +
               ": ";
    }

    std::shared_ptr<PathResolver> mNames;
    References mReferences;
    bool mHasThrown = false;
    /// The entry whose file may have ended the load.
    const MeshEntry* mLast = nullptr;
    std::set<const ZLMModel*> mSeen;
    /// The kuids of the assets that lead to the current one, and its own.
    std::vector<std::u16string> mOpen;
    std::vector<Problem> mProblems;
};

} // namespace

std::string Text(const Problem& problem)
{
    return problem.Where + problem.What +
           (problem.Part == ProblemPart::Place ? ", so it is at the origin" : "");
}

std::vector<Problem> FindProblems(const Asset& asset, const Input& input,
                                  const std::shared_ptr<PathResolver>& names, References references)
{
    if (const auto* const model = std::get_if<std::shared_ptr<ZLMModel>>(&asset.Object))
    {
        Finder finder(names, references);
        finder.FindIn(**model, asset.Outcome, FolderOf(input.Name) + std::u16string(BaseName(input.Name)));
        return finder.Take();
    }
    const std::string failure =
        std::visit([&](const auto& object) { return Failure(*object, asset.Outcome, *names); }, asset.Object);
    if (failure.empty())
        return {};
    return {{ProblemPart::File, nullptr, nullptr, ShownFile(input.Name) + ": ", failure}};
}

} // namespace ZLMIM::Tools
