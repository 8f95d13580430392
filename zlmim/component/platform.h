#pragma once

#include "zlmim/component/class_info.h"
#include "zlmim/component/types.h"

namespace ZLMIM::Component
{

/// What the component needs from the system, implemented for each.

/// Type information for the interface `iid`, from the module's type library. `E_NOTIMPL` on systems without
/// type libraries.
[[nodiscard]] HRESULT GetTypeInfoOf(REFIID iid, ITypeInfo** info) noexcept;

/// Result of `GetTypeInfoCount`: 1, or 0 on systems without type libraries.
[[nodiscard]] UINT TypeInfoCount() noexcept;

/// The record info that variants need to hold a record of `type`. It is shared, and the caller releases it.
[[nodiscard]] HRESULT GetRecordInfo(const RecordType& type, IRecordInfo** info) noexcept;

/// Frees what is cached between calls. Called before the module is unloaded.
void FreeCaches() noexcept;

/// Converts `from` to `type` by the system's rules for automation.
[[nodiscard]] HRESULT Coerce(VARIANT& to, VARIANT& from, VARTYPE type) noexcept;

/// Makes `text`, in UTF-8, the thread's error. Its source is the class's ProgID. Without memory for it the
/// thread has no error.
void SetError(const ClassInfo& source, const char* text) noexcept;

/// Moves source and description of the thread's error to `exception`. Null if the thread has no error.
void TakeError(EXCEPINFO& exception) noexcept;

/// Class objects that only the system asks for: marshalling on Windows, the thread's error elsewhere.
/// `CLASS_E_CLASSNOTAVAILABLE` for any other `classId`.
[[nodiscard]] HRESULT GetSystemClassObject(REFCLSID classId, REFIID iid, void** object) noexcept;

/// Adds the module with all its identifiers to the system's registry.
[[nodiscard]] HRESULT Register() noexcept;
/// Removes what `Register` added.
[[nodiscard]] HRESULT Unregister() noexcept;

} // namespace ZLMIM::Component
