#include "json.h"

#include "json_objects.h"

#include <utility>

namespace ZLMIM::Inspect
{

void WriteJson(const Examples::Asset& asset, std::ostream& out)
{
    const Examples::Outcome& outcome = asset.Outcome;
    Json json;
    json["Load"] = outcome.Raised.empty() ? Json(outcome.IsLoaded) : Json(outcome.Raised);
    Json object = std::visit([](const auto& held) { return ToJson(*held); }, asset.Object);
    for (auto& [name, value] : object.get_ref<Json::object_t&>())
        json[name] = std::move(value);
    Dump(json, out);
}

} // namespace ZLMIM::Inspect
