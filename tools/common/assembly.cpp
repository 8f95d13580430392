#include "tools/common/assembly.h"

#include "tools/common/text.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace ZLMIM::Tools
{
namespace
{

/// Adds the entries of a mesh table, whose origin is a reference or the asset's.
void AddEntries(const Collection<MeshEntry>& table, std::optional<std::size_t> origin, Assembly& assembly)
{
    std::unordered_map<const MeshEntry*, std::size_t> known;
    for (const auto& entry : table)
    {
        if (!entry || !entry->Mesh)
            continue;
        Part part = {entry->Name, entry};
        part.Parent = origin;
        if (origin)
            part.Reference = assembly.Parts[*origin].Reference;
        if (entry->Att)
        {
            // An entry hangs on one above it, or on itself.
            const auto parent = known.find(entry->AttParent().get());
            if (parent == known.end())
            {
                const std::u16string& name = entry->AttParent()->Name;
                assembly.Problems.push_back(
                    "entry " + Quoted(entry->Name) +
                    (entry->AttParent() == entry
                         ? " hangs on itself, so it is skipped"
                         : " is skipped, like " + Quoted(name) + ", on which it hangs"));
                continue;
            }
            part.Parent = parent->second;
            part.Point = entry->Att;
        }
        known.emplace(entry.get(), assembly.Parts.size());
        assembly.Parts.push_back(std::move(part));
    }
}

using Points = std::unordered_map<std::u16string, std::pair<std::size_t, std::shared_ptr<const Attachment>>>;

/// The first attachment point of each name.
Points PointsOf(const std::vector<Part>& parts)
{
    Points points;
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (const auto& attachments = parts[i].Entry->Mesh->Attachments)
            for (const auto& attachment : attachments->Entries())
                if (attachment)
                    points.emplace(attachment->Name, std::pair(i, attachment));
    return points;
}

} // namespace

bool IsEmpty(const ZLMModel& model)
{
    const auto table = model.MeshTable();
    return model.kuid().empty() && model.UserName.empty() && (!table || table->Count() == 0);
}

Assembly Assemble(const ZLMModel& model, References follow)
{
    Assembly assembly;
    const auto own = model.MeshTable();
    if (!own)
        return assembly;
    AddEntries(*own, std::nullopt, assembly);
    if (follow == References::Skip)
        return assembly;
    const Points points = PointsOf(assembly.Parts);

    std::vector<std::pair<std::u16string, std::shared_ptr<ZLMModel>>> references;
    if (model.Bogies && model.BogieNames)
        for (std::int32_t i = 1; i <= std::min(model.Bogies->Count(), model.BogieNames->Count()); ++i)
            references.emplace_back(model.BogieNames->Item(i), model.Bogies->Item(i));
    if (model.Pantograph)
        references.emplace_back(u"pantograph", model.Pantograph);

    std::size_t seen = 0;
    for (const auto& [key, reference] : references)
    {
        std::u16string pointName = u"a." + key;
        std::erase(pointName, u'-');
        const auto point = points.find(pointName);
        const auto table = reference ? reference->MeshTable() : nullptr;
        const auto skip = [&key = key](std::vector<std::string>& lines, const std::string& why)
        { lines.push_back(Printable(key) + " is skipped: " + why); };
        if (!reference || IsEmpty(*reference))
            continue; // not found
        if (!table || table->Count() == 0)
        {
            skip(assembly.Notes, "the asset " + Printable(reference->kuid()) + " has no mesh");
            continue;
        }
        if (point == points.end())
        {
            skip(assembly.Notes, "no mesh of the asset has an attachment point " + Quoted(pointName));
            continue;
        }
        if (++seen > kMaxReferences)
        {
            skip(assembly.Problems, "only " + Number(kMaxReferences) + " bogeys and pantographs are shown");
            continue;
        }
        assembly.Parts.push_back({key, nullptr, reference, point->second.first, point->second.second});
        AddEntries(*table, assembly.Parts.size() - 1, assembly);
    }
    return assembly;
}

} // namespace ZLMIM::Tools
