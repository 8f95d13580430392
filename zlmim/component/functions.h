#ifndef ZLMIM_COMPONENT_FUNCTIONS_H
#define ZLMIM_COMPONENT_FUNCTIONS_H

#include "zlmim/component/dispatch.h"
#include "zlmim/component/table.h"

namespace ZLMIM::Component
{

/// The identity and the table of a class of the model: `kInfo`, its `ClassInfo`, and `kRows`.
template <class T>
struct Interface;

/// Pointers to functions one behind the other, as a host's compiler lays out a table of virtual functions.
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

/// What `IUnknown` and `IDispatch` ask of an object of class `T`.
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
        return Component::Invoke(kInfo, *object, {id, iid, flags, arguments, result, exception, badArgument});
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

/// A new object for a host.
template <class T>
[[nodiscard]] ComHeader* Create()
{
    return Expose(std::make_shared<T>());
}

} // namespace ZLMIM::Component

#endif
