#pragma once

#include "tools/common/json_writer.h"

#include "zlmim/anim/anim.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/records.h"

#include <array>
#include <bit>
#include <memory>
#include <span>

namespace ZLMIM::Inspect
{

using Tools::JsonWriter;

/// Write the properties that a host can read, each under its name, into the current JSON object.
void WriteFields(JsonWriter& json, const Mesh& mesh);
void WriteFields(JsonWriter& json, const Anim& anim);
void WriteFields(JsonWriter& json, const ZLMModel& model);

/// An array of the record's fields.
template <class Record>
void WriteRecord(JsonWriter& json, const Record& record)
{
    static_assert(kIsRecord<Record>);
    json.BeginArray();
    for (const float field : std::bit_cast<std::array<float, sizeof(Record) / sizeof(float)>>(record))
        json.Float(field);
    json.EndArray();
}

/// An array of records.
template <class Record>
void WriteRecords(JsonWriter& json, std::span<const Record> records)
{
    json.BeginArray();
    for (const Record& record : records)
        WriteRecord(json, record);
    json.EndArray();
}

/// Calls `write` for the object; writes null for a null pointer.
template <class Object, class Write>
void WriteOrNull(JsonWriter& json, const std::shared_ptr<Object>& object, Write write)
{
    if (object)
        write(*object);
    else
        json.Null();
}

/// An array with one element for each object in a list, written by `write`; null for a null pointer.
template <class List, class Write>
void WriteList(JsonWriter& json, const std::shared_ptr<List>& list, Write write)
{
    if (!list)
        return json.Null();
    json.BeginArray();
    for (const auto& object : *list)
        WriteOrNull(json, object, write);
    json.EndArray();
}

} // namespace ZLMIM::Inspect
