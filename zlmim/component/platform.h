#ifndef ZLMIM_COMPONENT_PLATFORM_H
#define ZLMIM_COMPONENT_PLATFORM_H

#include "zlmim/component/abi.h"
#include "zlmim/component/types.h"

namespace ZLMIM::Component
{

/// What the component needs of the system it runs on.

/// The description of the interface `iid` from the module's own type library. `E_NOTIMPL` where the system
/// has no type libraries.
[[nodiscard]] HRESULT GetTypeInfoOf(REFIID iid, ITypeInfo** info) noexcept;

/// Number of descriptions that each object has: 1, or 0 where the system has no type libraries.
[[nodiscard]] UINT TypeInfoCount() noexcept;

/// What variants need to hold records of `type`. The caller owns a reference.
[[nodiscard]] HRESULT GetRecordInfo(const RecordType& type, IRecordInfo** info) noexcept;

/// `from` as a value of `type`, by the system's rules for automation.
[[nodiscard]] HRESULT Coerce(VARIANT& to, VARIANT& from, VARTYPE type) noexcept;

/// Enters the module with all its identifiers into the system's registry.
[[nodiscard]] HRESULT Register() noexcept;
/// Removes what `Register` has entered.
[[nodiscard]] HRESULT Unregister() noexcept;

} // namespace ZLMIM::Component

#endif
