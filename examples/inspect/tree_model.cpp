#include "tree.h"
#include "tree_text.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Inspect
{
namespace
{

/// The entries of a table by the entry that they hang on (none for those that stand by themselves), in order.
using Hanging = std::map<const MeshEntry*, std::vector<std::shared_ptr<MeshEntry>>>;

Hanging HangingEntries(const Collection<MeshEntry>& table)
{
    Hanging hanging;
    for (const auto& entry : table)
    {
        if (!entry)
            continue;
        const auto attParent = entry->AttParent();
        const bool isByItself = !attParent || attParent == entry;
        hanging[isByItself ? nullptr : attParent.get()].push_back(entry);
    }
    return hanging;
}

/// A mesh or an animation in one cell; `count` tells how much there is of it. Empty if nobody asked for it.
template <class Asset>
Cell FileCell(const std::shared_ptr<Asset>& asset, const std::string& count)
{
    if (!asset || asset->FileName.empty())
        return {};
    const std::u16string name = asset->FileName.substr(asset->FileName.rfind(u'\\') + 1);
    if (asset->FileSize == 0)
        return {Words({NameText(name), "(not loaded)"})};
    if (!asset->ErrorMessage.empty())
        return {Words({NameText(name), "(" + Printable(asset->ErrorMessage) + ")"})};
    return {Words({NameText(name), count})};
}

/// Levels of entries that hang on one another that are shown.
constexpr int kMaxLevels = 16;

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
    node.Cells = {
        {place},
        FileCell(entry.Mesh,
                 entry.Mesh ? Counted(entry.Mesh->Polygons, "triangle", "triangles") : std::string()),
        FileCell(entry.anim, entry.anim ? Counted(entry.anim->FrameCount, "frame", "frames") : std::string()),
    };
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

void AddText(Node& node, std::string_view label, const std::u16string& value)
{
    if (value.empty())
        return;
    std::u16string line = value;
    for (std::size_t end = line.find(u"\r\n"); end != std::u16string::npos; end = line.find(u"\r\n", end))
        line.replace(end, 2, u" / ");
    node.Children.push_back({"text", std::string(label), {{NameText(line)}}, {}});
}

Node ModelNode(const ZLMModel& model, std::string label);

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

Node ModelNode(const ZLMModel& model, std::string label)
{
    Node node{"model", std::move(label), {}, {}};
    const bool isEmpty = model.kuid().empty() && model.UserName.empty() && model.MeshTable() &&
                         model.MeshTable()->Count() == 0;
    node.Cells = {{isEmpty ? "(empty)" : NameText(model.UserName)},
                  {model.kuid().empty() ? std::string() : NameText(model.kuid())},
                  {model.Kind.empty() ? std::string() : Words({"kind", NameText(model.Kind)})}};
    AddText(node, "author", model.Author);
    AddText(node, "build", model.ZLMBuild);
    AddText(node, "file", model.AssetFileName);
    AddText(node, "description", model.Description);

    if (const auto table = model.MeshTable(); table && table->Count() > 0)
    {
        Node meshTable{{}, "Mesh table", {{Counted(table->Count(), "entry", "entries")}}, {}};
        const Hanging hanging = HangingEntries(*table);
        if (const auto byThemselves = hanging.find(nullptr); byThemselves != hanging.end())
        {
            for (const auto& entry : byThemselves->second)
                meshTable.Children.push_back(EntryNode(*entry, hanging, 1));
        }
        node.Children.push_back(std::move(meshTable));
    }
    AddReferences(node, model);
    return node;
}

} // namespace

Node ToTree(const ZLMModel& model) { return ModelNode(model, "Asset"); }

} // namespace ZLMIM::Inspect
