#pragma once

#include "zlmim/component/class_info.h"

namespace ZLMIM::Component
{

/// A call by name.
struct NamedCall
{
    DISPID id;
    REFIID iid;
    WORD flags;
    DISPPARAMS* arguments;
    VARIANT* result;
    EXCEPINFO* exception;
    UINT* badArgument;
};

/// The first slots of every interface, for any class. `AddRef` and `Release` are in object_reference.h.

[[nodiscard]] HRESULT QueryInterface(const ClassInfo& info, ComHeader& object, REFIID iid,
                                     void** result) noexcept;
HRESULT STDMETHODCALLTYPE GetTypeInfoCount(ComHeader* object, UINT* count) noexcept;
[[nodiscard]] HRESULT GetTypeInfo(const ClassInfo& info, UINT number, ITypeInfo** result) noexcept;
/// Ignores letter case. Names after the first are those of parameters, whose ids count from 0.
[[nodiscard]] HRESULT GetIDsOfNames(const ClassInfo& info, REFIID iid, LPOLESTR* names, UINT count,
                                    DISPID* ids) noexcept;
/// Implements `IDispatch::Invoke`. Arguments for a property that is a list are passed on to the list:
/// `Children(2)` reads its second entry.
[[nodiscard]] HRESULT Dispatch(const ClassInfo& info, ComHeader& object, const NamedCall& call) noexcept;

} // namespace ZLMIM::Component
