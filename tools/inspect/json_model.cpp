#include "json_fields.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace ZLMIM::Inspect
{
namespace
{

/// The position of `wanted` in a list, from 1, or null.
template <class Object>
void WritePosition(JsonWriter& json, const std::shared_ptr<Object>& wanted,
                   const std::shared_ptr<Collection<Object>>& list)
{
    if (!wanted || !list)
        return json.Null();
    // Compares stored references: a table may be long, and returning its entries is slower.
    const auto entries = list->Entries();
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.get() == wanted.get(); });
    if (found == entries.end())
        json.Null();
    else
        json.Integer(found - entries.begin() + 1);
}

template <class Object>
void WriteObject(JsonWriter& json, const Object& object)
{
    json.BeginObject();
    WriteFields(json, object);
    json.EndObject();
}

void WriteEntry(JsonWriter& json, const MeshEntry& entry, const ZLMModel& model)
{
    const auto attParent = entry.AttParent();
    json.BeginObject();
    json.Key("Name").Text(entry.Name);
    json.Key("ParentOk").Boolean(entry.Parent().get() == &model);
    json.Key("AttParent");
    WritePosition(json, attParent, model.MeshTable());
    json.Key("Att");
    if (attParent && attParent->Mesh)
        WritePosition(json, entry.Att, attParent->Mesh->Attachments);
    else
        json.Null();
    json.Key("Mesh");
    WriteOrNull(json, entry.Mesh, [&json](const Mesh& mesh) { WriteObject(json, mesh); });
    json.Key("anim");
    WriteOrNull(json, entry.anim, [&json](const Anim& anim) { WriteObject(json, anim); });
    json.EndObject();
}

void WriteBogies(JsonWriter& json, const Collection<ZLMModel>& bogies)
{
    std::unordered_map<const ZLMModel*, std::int32_t> firstPositions;
    std::int32_t position = 0;
    json.BeginArray();
    for (const auto& bogey : bogies)
    {
        ++position;
        const auto [first, isNew] = firstPositions.emplace(bogey.get(), position);
        if (!bogey)
            json.Null();
        else if (isNew)
            WriteObject(json, *bogey);
        else
        {
            json.BeginObject();
            json.Key("SameAs").Integer(first->second);
            json.EndObject();
        }
    }
    json.EndArray();
}

} // namespace

void WriteFields(JsonWriter& json, const ZLMModel& model)
{
    json.Key("AssetFileName").Text(model.AssetFileName);
    json.Key("Author").Text(model.Author);
    json.Key("UserName").Text(model.UserName);
    json.Key("Kind").Text(model.Kind);
    json.Key("Description").Text(model.Description);
    json.Key("ZLMBuild").Text(model.ZLMBuild);
    json.Key("kuid").Text(model.kuid());
    json.Key("MeshTable");
    WriteList(json, model.MeshTable(), [&](const MeshEntry& entry) { WriteEntry(json, entry, model); });
    json.Key("Bogies");
    WriteOrNull(json, model.Bogies, [&json](const auto& bogies) { WriteBogies(json, bogies); });
    json.Key("BogieNames");
    WriteOrNull(json, model.BogieNames,
                [&json](const auto& names)
                {
                    json.BeginArray();
                    for (const std::u16string& name : names)
                        json.Text(name);
                    json.EndArray();
                });
    json.Key("Pantograph");
    WriteOrNull(json, model.Pantograph,
                [&json](const ZLMModel& pantograph) { WriteObject(json, pantograph); });
}

} // namespace ZLMIM::Inspect
