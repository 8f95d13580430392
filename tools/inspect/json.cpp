#include "json.h"

#include "json_fields.h"

namespace ZLMIM::Inspect
{

void WriteJson(const Tools::Asset& asset, std::ostream& out)
{
    JsonWriter json(out, JsonWriter::Form::OneLine);
    json.BeginObject();
    json.Key("Load");
    if (asset.Outcome.Thrown.empty())
        json.Boolean(asset.Outcome.IsLoaded);
    else
        json.Text(asset.Outcome.Thrown);
    std::visit([&json](const auto& object) { WriteFields(json, *object); }, asset.Object);
    json.EndObject();
}

} // namespace ZLMIM::Inspect
