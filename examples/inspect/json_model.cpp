#include "json_objects.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace ZLMIM::Inspect
{
namespace
{

/// The position of `wanted` in a list, from 1; null for none.
template <class Object>
Json PositionOf(const std::shared_ptr<Object>& wanted, const std::shared_ptr<Collection<Object>>& list)
{
    if (!wanted || !list)
        return nullptr;
    // Looked at as they are stored: a table may be long, and handing its entries out has its price.
    const auto entries = list->Entries();
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.get() == wanted.get(); });
    return found == entries.end() ? Json(nullptr) : Json(found - entries.begin() + 1);
}

Json EntryToJson(const MeshEntry& entry, const ZLMModel& model)
{
    const auto attParent = entry.AttParent();
    Json json;
    json["Name"] = TextToJson(entry.Name);
    json["ParentOk"] = entry.Parent().get() == &model;
    json["AttParent"] = PositionOf(attParent, model.MeshTable());
    json["Att"] =
        attParent && attParent->Mesh ? PositionOf(entry.Att, attParent->Mesh->Attachments) : Json(nullptr);
    json["Mesh"] = OrNull(entry.Mesh, [](const Mesh& mesh) { return ToJson(mesh); });
    json["anim"] = OrNull(entry.anim, [](const Anim& anim) { return ToJson(anim); });
    return json;
}

Json BogiesToJson(const Collection<ZLMModel>& bogies)
{
    std::unordered_map<const ZLMModel*, std::int32_t> firstPositions;
    Json array = Json::array();
    std::int32_t position = 0;
    for (const auto& bogey : bogies)
    {
        ++position;
        const auto [first, isNew] = firstPositions.emplace(bogey.get(), position);
        if (!bogey)
            array.push_back(nullptr);
        else if (isNew)
            array.push_back(ToJson(*bogey));
        else
            array.push_back({{"SameAs", first->second}});
    }
    return array;
}

} // namespace

Json ToJson(const ZLMModel& model)
{
    Json json;
    json["AssetFileName"] = TextToJson(model.AssetFileName);
    json["Author"] = TextToJson(model.Author);
    json["UserName"] = TextToJson(model.UserName);
    json["Kind"] = TextToJson(model.Kind);
    json["Description"] = TextToJson(model.Description);
    json["ZLMBuild"] = TextToJson(model.ZLMBuild);
    json["kuid"] = TextToJson(model.kuid());
    json["MeshTable"] =
        ListOf(model.MeshTable(), [&model](const MeshEntry& entry) { return EntryToJson(entry, model); });
    json["Bogies"] = OrNull(model.Bogies, BogiesToJson);
    json["BogieNames"] = OrNull(model.BogieNames,
                                [](const auto& names)
                                {
                                    Json array = Json::array();
                                    for (const auto& name : names)
                                        array.push_back(TextToJson(name));
                                    return array;
                                });
    json["Pantograph"] =
        OrNull(model.Pantograph, [](const ZLMModel& pantograph) { return ToJson(pantograph); });
    return json;
}

} // namespace ZLMIM::Inspect
