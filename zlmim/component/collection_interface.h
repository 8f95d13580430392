#pragma once

#include "zlmim/component/interface_table.h"
#include "zlmim/component/list_enumerator.h"
#include "zlmim/model/collection.h"

#include <cstdint>
#include <memory>
#include <type_traits>

namespace ZLMIM::Component
{

/// `_Collection`, the platform's list interface, for the model's lists. A list takes only what its property
/// holds, has no keys, and appends only.

/// How the entries of a list cross the boundary.
template <class T>
using EntryWire = Wire<typename Collection<T>::Entry>;

/// Stores entry `number` in `variant`, which is empty. The caller owns it.
template <class T>
void StoreEntry(const Collection<T>& list, std::int32_t number, VARIANT& variant)
{
    auto entry = EntryWire<T>::Out(list.Item(number));
    if (const HRESULT status = StoreResult<typename Collection<T>::Entry>(variant, entry); FAILED(status))
        throw Failure{status, "the entry can't be copied"};
}

template <class T>
[[nodiscard]] VARIANT Item(Collection<T>& list, const VARIANT& index)
{
    VARIANT entry{};
    StoreEntry(list, ToNumber(index), entry);
    return entry;
}

template <class T>
void Add(Collection<T>& list, const VARIANT& item, const VARIANT& key, const VARIANT& before,
         const VARIANT& after)
{
    for (const VARIANT* const argument : {&key, &before, &after})
        RefuseKey(*argument);
    const Failure wrongType{DISP_E_TYPEMISMATCH, "the list holds entries of another type"};
    // Without conversions: the system would turn any number into text, and nothing into a null object.
    const VARTYPE type = TypeOf(item);
    if (type != EntryWire<T>::kVarType && !(EntryWire<T>::kVarType == VT_DISPATCH && type == VT_UNKNOWN))
        throw wrongType;
    using Value = Argument<kIsRecordType<T> ? Passing::Ref : Passing::In, typename Collection<T>::Entry>;
    VARIANT given = item;
    try
    {
        Converted<Value> converted(Given{given, 0});
        list.Add(std::move(Value(converted.Get()).Get()));
    }
    catch (const BadArgument&)
    {
        throw wrongType;
    }
}

template <class T>
void Remove(Collection<T>& list, const VARIANT& index)
{
    const std::int32_t number = ToNumber(index);
    list.Remove(number);
    ListEnumerator::EntryRemoved(&list, number);
}

template <class T>
[[nodiscard]] IUnknown* NewEnum(Collection<T>& list)
{
    return new ListEnumerator(
        std::static_pointer_cast<Collection<T>>(list.ComHeader.Self),
        [](const void* object, std::int32_t number, VARIANT& entry)
        { StoreEntry(*static_cast<const Collection<T>*>(object), number, entry); },
        [](const void* object) { return static_cast<const Collection<T>*>(object)->Count(); });
}

template <class T>
struct Interface<Collection<T>>
{
    // clang-format off
    static constexpr InterfaceId kIds[] = {{"_Collection", kCollection}};
    static constexpr auto kRows = TableWithIds(
        MethodWithId<&Item<T>, Passing::Ref>(DISPID_VALUE, "Item", {"index"}),
        MethodWithId<&Add<T>, Passing::Ref, Passing::Ref, Passing::Ref, Passing::Ref>(1, "Add", {"Item", "Key", "Before", "After"}, 3),
        MethodWithId<&Collection<T>::Count>(2, "Count"),
        MethodWithId<&Remove<T>, Passing::Ref>(3, "Remove", {"index"}),
        MethodWithId<&NewEnum<T>>(DISPID_NEWENUM, "_NewEnum"));
    static constexpr ClassInfo kInfo{"Collection", kNoInterface, nullptr, kIds, kRows.members, nullptr};
    // clang-format on
};

} // namespace ZLMIM::Component
