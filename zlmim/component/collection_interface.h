#ifndef ZLMIM_COMPONENT_COLLECTION_INTERFACE_H
#define ZLMIM_COMPONENT_COLLECTION_INTERFACE_H

#include "zlmim/component/functions.h"
#include "zlmim/component/list_enumerator.h"
#include "zlmim/model/collection.h"

#include <cstdint>
#include <memory>

namespace ZLMIM::Component
{

/// What a host knows as `_Collection`: the five members of the platform's list, over a list of the model. It
/// takes only what the list holds, has no keys, and appends only.

/// How the entries of a list cross the boundary.
template <class T>
using EntryWire = Wire<typename Collection<T>::Entry>;

/// The number that `index` holds.
/// @throws Failure `E_INVALIDARG` for a key, or anything else that isn't a number
[[nodiscard]] std::int32_t ToNumber(const VARIANT& index);

/// @throws Failure `E_INVALIDARG` for an argument that is there: lists have no keys, and append only
void RefuseKey(const VARIANT& argument);

/// Entry `number` as a variant that the caller owns.
template <class T>
[[nodiscard]] VARIANT EntryAt(const Collection<T>& list, std::int32_t number)
{
    auto entry = EntryWire<T>::Out(list.Item(number));
    VARIANT variant{};
    if (const HRESULT status = StoreResult<typename Collection<T>::Entry>(variant, entry); FAILED(status))
        throw Failure{status};
    return variant;
}

template <class T>
[[nodiscard]] VARIANT Item(Collection<T>& list, const VARIANT& index)
{
    return EntryAt(list, ToNumber(index));
}

template <class T>
void Add(Collection<T>& list, const VARIANT& item, const VARIANT& key, const VARIANT& before,
         const VARIANT& after)
{
    for (const VARIANT* const argument : {&key, &before, &after})
        RefuseKey(*argument);
    using Value = Argument<kIsRecordType<T> ? How::Ref : How::In, typename Collection<T>::Entry>;
    VARIANT given = item;
    // Where the system would make a text of anything.
    if (std::is_same_v<T, std::u16string> && (Dereferenced(given).vt & ~VT_BYREF) != VT_BSTR)
        throw Failure{DISP_E_TYPEMISMATCH};
    Converted<Value> converted(Given{&given, 0});
    list.Add(std::move(Value(converted.Get()).Get()));
}

template <class T>
void Remove(Collection<T>& list, const VARIANT& index)
{
    list.Remove(ToNumber(index));
}

template <class T>
[[nodiscard]] IUnknown* NewEnum(Collection<T>& list)
{
    return ListEnumerator::Make(
        std::static_pointer_cast<Collection<T>>(list.ComHeader.Self),
        [](const void* object, std::int32_t number)
        { return EntryAt(*static_cast<const Collection<T>*>(object), number); },
        [](const void* object) { return static_cast<const Collection<T>*>(object)->Count(); });
}

inline constexpr InterfaceId kCollectionInterface[] = {{"_Collection", kCollection}};

template <class T>
struct Interface<Collection<T>>
{
    static constexpr auto kRows =
        NumberedTable(NumberedMethod<&Item<T>, How::Ref>(DISPID_VALUE, "Item", {"Index"}),
                      NumberedMethod<&Add<T>, How::Ref, How::Ref, How::Ref, How::Ref>(
                          1, "Add", {"Item", "Key", "Before", "After"}, 3),
                      NumberedMethod<&Collection<T>::Count>(2, "Count"),
                      NumberedMethod<&Remove<T>, How::Ref>(3, "Remove", {"Index"}),
                      NumberedMethod<&NewEnum<T>>(DISPID_NEWENUM, "_NewEnum"));

    static constexpr ClassInfo kInfo{"Collection",         kNoInterface,  nullptr,
                                     kCollectionInterface, kRows.members, nullptr};
};

} // namespace ZLMIM::Component

#endif
