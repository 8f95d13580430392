#pragma once

#include "zlmim/component/dispatch.h"
#include "zlmim/component/slots.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

namespace ZLMIM::Component
{

/// The table of an interface lists its members once, in the order of the slots. A row is one slot, or two for
/// a property: reading and writing. The function table is made from the rows' types, every description of the
/// members from their values.
template <class... Slots>
struct Rows
{
    std::array<Member, sizeof...(Slots)> members;
};

/// A property whose slot for reading comes first. `kGet` is a public field or the function that reads it;
/// `kPut` is the same field or the function that writes it.
template <auto kGet, auto kPut = kGet>
[[nodiscard]] constexpr Rows<GetSlot<kGet>, PutSlot<kPut>> Property(const char* name,
                                                                    const char* help = nullptr)
{
    return {{GetSlot<kGet>::Describe(name, help), PutSlot<kPut>::Describe(name, help)}};
}

/// A property whose slot for writing comes first.
template <auto kGet, auto kPut = kGet>
[[nodiscard]] constexpr Rows<PutSlot<kPut>, GetSlot<kGet>> PropertyPutFirst(const char* name,
                                                                            const char* help = nullptr)
{
    return {{PutSlot<kPut>::Describe(name, help), GetSlot<kGet>::Describe(name, help)}};
}

/// A method: a member function, or a function whose first argument is the object. `kPassing` says how each
/// argument is passed, `names` gives their names.
template <auto kFunction, Passing... kPassing>
[[nodiscard]] constexpr Rows<MethodSlot<kFunction, kPassing...>>
Method(const char* name, std::array<const char*, sizeof...(kPassing)> names = {}, const char* help = nullptr)
{
    return {{MethodSlot<kFunction, kPassing...>::Describe(name, names, help)}};
}

/// A method with a fixed id for calls by name. The last `optionalCount` arguments may be omitted.
template <auto kFunction, Passing... kPassing>
[[nodiscard]] constexpr Rows<MethodSlot<kFunction, kPassing...>>
MethodWithId(DISPID id, const char* name, std::array<const char*, sizeof...(kPassing)> names = {},
             std::size_t optionalCount = 0)
{
    auto rows = Method<kFunction, kPassing...>(name, names);
    rows.members[0].id = id;
    rows.members[0].optionalCount = optionalCount;
    return rows;
}

template <class... A, class... B>
[[nodiscard]] constexpr Rows<A..., B...> operator+(const Rows<A...>& a, const Rows<B...>& b)
{
    Rows<A..., B...> rows{};
    for (std::size_t i = 0; i < sizeof...(A); ++i)
        rows.members[i] = a.members[i];
    for (std::size_t i = 0; i < sizeof...(B); ++i)
        rows.members[sizeof...(A) + i] = b.members[i];
    return rows;
}

/// An interface whose members keep their own ids.
template <class... R>
[[nodiscard]] constexpr auto TableWithIds(const R&... rows)
{
    return (rows + ...);
}

/// An interface. The id of a member for calls by name is the number of its first slot, counted from 0 and
/// with the slots of `IUnknown` and `IDispatch`.
template <class... R>
[[nodiscard]] constexpr auto Table(const R&... rows)
{
    auto table = (rows + ...);
    int slot = kFirstSlot;
    for (Member& member : table.members)
    {
        member.id = slot++;
        for (const Member& earlier : table.members)
        {
            if (std::string_view(earlier.name) == member.name)
            {
                member.id = earlier.id;
                break;
            }
        }
    }
    return table;
}

/// Function pointers one after the other, laid out as compilers lay out a table of virtual functions.
template <class... P>
struct Pointers
{
};
template <class P, class... Rest>
struct Pointers<P, Rest...>
{
    P first;
    [[no_unique_address]] Pointers<Rest...> rest;
};

[[nodiscard]] constexpr Pointers<> MakePointers() { return {}; }
template <class P, class... Rest>
[[nodiscard]] constexpr Pointers<P, Rest...> MakePointers(P first, Rest... rest)
{
    return {first, MakePointers(rest...)};
}

/// The slots of `IUnknown` and `IDispatch` that depend on the class.
template <class T>
struct BaseSlots
{
    static constexpr const ClassInfo& kInfo = Interface<T>::kInfo;

    static HRESULT STDMETHODCALLTYPE QueryInterface(ComHeader* object, REFIID iid, void** result) noexcept
    {
        return Component::QueryInterface(kInfo, *object, iid, result);
    }
    static HRESULT STDMETHODCALLTYPE GetTypeInfo(ComHeader*, UINT number, LCID, ITypeInfo** info) noexcept
    {
        return Component::GetTypeInfo(kInfo, number, info);
    }
    static HRESULT STDMETHODCALLTYPE GetIDsOfNames(ComHeader*, REFIID iid, LPOLESTR* names, UINT count, LCID,
                                                   DISPID* ids) noexcept
    {
        return Component::GetIDsOfNames(kInfo, iid, names, count, ids);
    }
    static HRESULT STDMETHODCALLTYPE Invoke(ComHeader* object, DISPID id, REFIID iid, LCID, WORD flags,
                                            DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                            UINT* badArgument) noexcept
    {
        return Component::Dispatch(kInfo, *object,
                                   {id, iid, flags, arguments, result, exception, badArgument});
    }
};

template <class T, class... Slots>
[[nodiscard]] constexpr auto MakeFunctions(const Rows<Slots...>&)
{
    return MakePointers(&BaseSlots<T>::QueryInterface, &AddRef, &Release, &GetTypeInfoCount,
                        &BaseSlots<T>::GetTypeInfo, &BaseSlots<T>::GetIDsOfNames, &BaseSlots<T>::Invoke,
                        &Slots::Call...);
}

template <class T>
struct Functions
{
    static constexpr auto kTable = MakeFunctions<T>(Interface<T>::kRows);
    static_assert(sizeof(kTable) == (kFirstSlot + Interface<T>::kRows.members.size()) * sizeof(void*));
};

template <class T>
const void* FunctionsOf() noexcept
{
    return &Functions<T>::kTable;
}

/// Creates an object for a host.
template <class T>
[[nodiscard]] ComHeader* Create()
{
    return Expose(std::make_shared<T>());
}

} // namespace ZLMIM::Component
