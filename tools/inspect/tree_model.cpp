#include "tree.h"
#include "tree_mesh.h"
#include "tree_text.h"

#include "tools/common/paths.h"

#include "zlmim/reader/load_budget.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Inspect
{
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
    ModelTree(const Tools::Outcome& outcome, const TreeForm& form, PathResolver& names)
        : mHasThrown(!outcome.Thrown.empty()), mForm(form), mNames(names)
    {
    }

    Node ModelNode(const ZLMModel& model, std::string label)
    {
        Node node{"model", std::move(label), {}, {}};
        const auto table = model.MeshTable();
        const bool isEmpty =
            model.kuid().empty() && model.UserName.empty() && (!table || table->Count() == 0);
        node.Cells = {{isEmpty ? "(empty)" : NameText(model.UserName)},
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
            // The entry whose file may have ended the load.
            mLast = table->Item(table->Count()).get();
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
    /// A mesh or an animation in one cell: its name, then `count`, or why it isn't loaded.
    template <class Object>
    Cell FileCell(const Object& object, bool isSuspect, const std::string& count)
    {
        if (object.FileName.empty())
            return {};
        const std::string name = NameText(Tools::BaseName(object.FileName));
        if (isSuspect)
        {
            // The model's load doesn't say which of its files failed, or how.
            Object again;
            LoadBudget budget;
            const Tools::Outcome outcome =
                Tools::Attempt([&] { return again.Load(object.FileName, mNames, budget); });
            if (!outcome.IsLoaded)
                return {Words({name, "(" + Tools::Failure(again, outcome, mNames) + ")"}), Cell::Align::Left,
                        Tools::Colour::Red};
        }
        return {Words({name, count})};
    }

    Cell MeshCell(const MeshEntry& entry)
    {
        if (!entry.Mesh)
            return {};
        const bool isSuspect = !Tools::HasChunks(*entry.Mesh) || (mHasThrown && &entry == mLast);
        return FileCell(*entry.Mesh, isSuspect, Counted(entry.Mesh->Polygons, "triangle", "triangles"));
    }

    Cell AnimCell(const MeshEntry& entry)
    {
        if (!entry.anim)
            return {};
        const Anim& anim = *entry.anim;
        // One of the slots may be empty: there is one more than frames.
        const auto isEmpty = [](const Keyframe& frame) { return frame == Keyframe(); };
        const bool isSuspect = !anim.RootBone || (mHasThrown && &entry == mLast) ||
                               std::ranges::count_if(anim.RootBone->Frames(), isEmpty) > 1;
        return FileCell(anim, isSuspect, Counted(anim.FrameCount, "frame", "frames"));
    }

    Node EntryNode(const MeshEntry& entry, const Hanging& hanging, int level)
    {
        Node node{"entry", NameText(entry.Name), {}, {}};
        const auto attParent = entry.AttParent();
        std::string place;
        if (entry.Att)
            place = Words({"at", NameText(entry.Att->Name)});
        else if (attParent)
            place = "(no such attachment)";
        if (attParent.get() == &entry)
            place = Words({place, "of itself"});
        node.Cells = {{place}, MeshCell(entry), AnimCell(entry)};
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

    bool mHasThrown;
    const TreeForm& mForm;
    PathResolver& mNames;
    const MeshEntry* mLast = nullptr;
};

} // namespace

Node ToTree(const ZLMModel& model, const Tools::Outcome& outcome, const TreeForm& form, PathResolver& names)
{
    return ModelTree(outcome, form, names).ModelNode(model, "Asset");
}

} // namespace ZLMIM::Inspect
