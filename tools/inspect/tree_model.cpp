#include "tree.h"
#include "tree_mesh.h"
#include "tree_text.h"

#include "tools/common/assembly.h"
#include "tools/common/paths.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Inspect
{

using Tools::Problem;
using Tools::ProblemPart;

namespace
{

/// The entries of a table, in order, grouped by the entry that they hang on; null for those at the top.
using Hanging = std::map<const MeshEntry*, std::vector<std::shared_ptr<MeshEntry>>>;

Hanging HangingEntries(const Collection<MeshEntry>& table)
{
    Hanging hanging;
    for (const auto& entry : table)
    {
        if (!entry)
            continue;
        const auto attParent = entry->AttParent();
        const bool isAtTop = !attParent || attParent == entry;
        hanging[isAtTop ? nullptr : attParent.get()].push_back(entry);
    }
    return hanging;
}

/// Maximum number of levels of attached entries to show.
constexpr int kMaxLevels = 16;

class ModelTree
{
public:
    ModelTree(const std::vector<Problem>& problems, const TreeForm& form) : mForm(form)
    {
        for (const Problem& problem : problems)
        {
            const void* const entry = problem.Entry;
            mProblems.try_emplace({problem.Part, entry ? entry : problem.Model}, problem.What);
        }
    }

    Node ModelNode(const ZLMModel& model, std::string label)
    {
        Node node{"model", std::move(label), {}, {}};
        const auto table = model.MeshTable();
        const std::string name = Tools::IsEmpty(model) ? "(empty)" : NameText(model.UserName);
        const std::string problem = ProblemText(ProblemPart::File, &model);
        node.Cells = {problem.empty() ? Cell{name} : Broken(Tools::IsEmpty(model) ? "" : name, problem),
                      {model.kuid().empty() ? std::string() : NameText(model.kuid())},
                      {model.Kind.empty() ? std::string() : Words({"kind", NameText(model.Kind)})}};
        AddText(node, "author", model.Author);
        AddText(node, "build", model.ZLMBuild);
        AddText(node, "file", model.AssetFileName);
        AddText(node, "description", model.Description);

        if (table && table->Count() > 0)
        {
            Node meshTable{{}, "Mesh table", {{Counted(table->Count(), "entry", "entries")}}, {}};
            const Hanging hanging = HangingEntries(*table);
            if (const auto atTop = hanging.find(nullptr); atTop != hanging.end())
            {
                for (const auto& entry : atTop->second)
                    meshTable.Children.push_back(EntryNode(*entry, hanging, 1));
            }
            node.Children.push_back(std::move(meshTable));
        }
        AddReferences(node, model);
        return node;
    }

private:
    /// What is wrong with that part of an entry or a model; empty if nothing is.
    [[nodiscard]] std::string ProblemText(ProblemPart part, const void* object) const
    {
        const auto found = mProblems.find({part, object});
        return found == mProblems.end() ? std::string() : found->second;
    }

    static Cell Broken(const std::string& name, const std::string& problem)
    {
        return {Words({name, "(" + problem + ")"}), Cell::Align::Left, Tools::Colour::Red};
    }

    /// A mesh or an animation in one cell: its name, then `count`, or why it isn't loaded.
    static Cell FileCell(const std::u16string& file, const std::string& problem, const std::string& count)
    {
        const std::string name = file.empty() ? std::string() : NameText(Tools::BaseName(file));
        if (!problem.empty())
            return Broken(name, problem);
        return name.empty() ? Cell{} : Cell{Words({name, count})};
    }

    [[nodiscard]] Cell MeshCell(const MeshEntry& entry) const
    {
        return !entry.Mesh ? Cell{}
                           : FileCell(entry.Mesh->FileName, ProblemText(ProblemPart::Mesh, &entry),
                                      Counted(entry.Mesh->Polygons, "triangle", "triangles"));
    }

    [[nodiscard]] Cell AnimCell(const MeshEntry& entry) const
    {
        return !entry.anim ? Cell{}
                           : FileCell(entry.anim->FileName, ProblemText(ProblemPart::Anim, &entry),
                                      Counted(entry.anim->FrameCount, "frame", "frames"));
    }

    Node EntryNode(const MeshEntry& entry, const Hanging& hanging, int level)
    {
        Node node{"entry", NameText(entry.Name), {}, {}};
        const auto attParent = entry.AttParent();
        const std::string problem = ProblemText(ProblemPart::Place, &entry);
        std::string place = entry.Att ? Words({"at", NameText(entry.Att->Name)}) : std::string();
        if (attParent.get() == &entry)
            place = Words({place, "of itself"});
        node.Cells = {problem.empty() ? Cell{place} : Broken(place, problem), MeshCell(entry),
                      AnimCell(entry)};
        if (mForm.IsVerbose && entry.Mesh)
            AddMaterials(node, *entry.Mesh);
        const auto below = hanging.find(&entry);
        if (below == hanging.end())
            return node;
        if (level == kMaxLevels)
            AddMore(node, static_cast<std::int64_t>(below->second.size()), "more, with what hangs on them");
        else
            for (const auto& child : below->second)
                node.Children.push_back(EntryNode(*child, hanging, level + 1));
        return node;
    }

    void AddText(Node& node, std::string_view label, const std::u16string& value) const
    {
        if (value.empty())
            return;
        std::u16string line;
        for (std::size_t i = 0; i < value.size(); ++i)
        {
            const bool isBreak = value[i] == u'\r' || value[i] == u'\n';
            if (value[i] == u'\r' && i + 1 < value.size() && value[i + 1] == u'\n')
                ++i;
            line += isBreak ? u" / " : std::u16string(1, value[i]);
        }
        node.Children.push_back({"text", std::string(label), {{Printable(line)}}, {}});
    }

    void AddReferences(Node& node, const ZLMModel& model)
    {
        std::map<const ZLMModel*, std::int32_t> positions;
        const std::int32_t listed = model.Bogies ? ListedCount(model.Bogies->Count()) : 0;
        for (std::int32_t number = 1; number <= listed; ++number)
        {
            const auto bogey = model.Bogies->Item(number);
            const bool isNamed = model.BogieNames && number <= model.BogieNames->Count();
            const std::string name = isNamed ? NameText(model.BogieNames->Item(number)) : "bogey";
            const auto [first, isNew] = positions.emplace(bogey.get(), number);
            if (bogey && isNew)
                node.Children.push_back(ModelNode(*bogey, name));
            else if (bogey)
                node.Children.push_back(
                    {"model", name, {{Words({"the same as number", Number(first->second)})}}, {}});
        }
        AddMore(node, model.Bogies ? model.Bogies->Count() - listed : 0, "more bogeys");
        if (model.Pantograph)
            node.Children.push_back(ModelNode(*model.Pantograph, "pantograph"));
    }

    /// By the entry or, if it isn't about an entry, the model.
    std::map<std::pair<ProblemPart, const void*>, std::string> mProblems;
    const TreeForm& mForm;
};

} // namespace

Node ToTree(const ZLMModel& model, const std::vector<Problem>& problems, const TreeForm& form)
{
    return ModelTree(problems, form).ModelNode(model, "Asset");
}

} // namespace ZLMIM::Inspect
