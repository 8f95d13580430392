#ifndef ZLMIM_COMPONENT_DISPATCH_H
#define ZLMIM_COMPONENT_DISPATCH_H

#include "zlmim/component/class_info.h"

namespace ZLMIM::Component
{

/// A call by name.
struct Call
{
    DISPID id;
    REFIID iid;
    WORD flags;
    DISPPARAMS* arguments;
    VARIANT* result;
    EXCEPINFO* exception;
    UINT* badArgument;
};

/// What the first slots of every interface do, whatever the class.

[[nodiscard]] HRESULT QueryInterface(const ClassInfo& info, ComHeader& object, REFIID iid,
                                     void** result) noexcept;
ULONG STDMETHODCALLTYPE AddRef(ComHeader* object) noexcept;
/// The last reference frees the object, if nothing of the model holds it.
ULONG STDMETHODCALLTYPE Release(ComHeader* object) noexcept;
HRESULT STDMETHODCALLTYPE GetTypeInfoCount(ComHeader* object, UINT* count) noexcept;
[[nodiscard]] HRESULT GetTypeInfo(const ClassInfo& info, UINT number, ITypeInfo** result) noexcept;
/// Names match in any letter case. The names behind the first are those of arguments, numbered from 0.
[[nodiscard]] HRESULT GetIDsOfNames(const ClassInfo& info, REFIID iid, LPOLESTR* names, UINT count,
                                    DISPID* ids) noexcept;
/// Arguments are given by position. Arguments behind the reading of a list are the list's: `Children(2)`
/// reads its second entry.
[[nodiscard]] HRESULT Invoke(const ClassInfo& info, ComHeader& object, const Call& call) noexcept;

} // namespace ZLMIM::Component

#endif
