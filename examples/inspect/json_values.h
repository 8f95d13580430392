#ifndef INSPECT_JSON_VALUES_H
#define INSPECT_JSON_VALUES_H

#include "zlmim/model/records.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string_view>

namespace ZLMIM::Inspect
{

/// Keys stay in the order in which they were set. Two kinds of values need `Dump` to become JSON: floats, and
/// numbers by the run (the fields of a record, the elements of a list), which lie in a binary value.
using Json = nlohmann::ordered_json;

/// Writes the text, on one line. Floats have the fewest digits that give the same f32 back (which
/// `Json::dump` doesn't promise); what JSON has no number for becomes a string.
void Dump(const Json& json, std::ostream& out);

[[nodiscard]] Json TextToJson(std::u16string_view text);

/// An array of floats, which are copied.
[[nodiscard]] Json FloatsToJson(std::span<const std::byte> floats);

/// What a list is made of.
enum class Element : std::uint8_t
{
    Integer,
    Record3 = 3, // by the number of its floats
    Record5 = 5,
    Record7 = 7,
};

/// An array of integers, or of arrays of floats. Only refers to them, since a small file can ask for
/// millions: they must stay until the last `Dump`.
[[nodiscard]] Json ElementsToJson(std::span<const std::byte> elements, Element element);

/// An array of the record's fields.
template <class Record>
[[nodiscard]] Json RecordToJson(const Record& record)
{
    static_assert(kIsRecord<Record>);
    return FloatsToJson(std::as_bytes(std::span(&record, 1)));
}

/// An array of records. Only refers to them, as `ElementsToJson` does.
template <class Record>
[[nodiscard]] Json RecordsToJson(std::span<const Record> records)
{
    static_assert(kIsRecord<Record>);
    return ElementsToJson(std::as_bytes(records), Element{sizeof(Record) / sizeof(float)});
}

/// What `convert` makes of the object; null for none.
template <class Object, class Convert>
[[nodiscard]] Json OrNull(const std::shared_ptr<Object>& object, Convert convert)
{
    return object ? convert(*object) : Json(nullptr);
}

/// An array of what `convert` makes of each object in a list; null for no list.
template <class List, class Convert>
[[nodiscard]] Json ListOf(const std::shared_ptr<List>& list, Convert convert)
{
    if (!list)
        return nullptr;
    Json array = Json::array();
    for (const auto& object : *list)
        array.push_back(OrNull(object, convert));
    return array;
}

} // namespace ZLMIM::Inspect

#endif
