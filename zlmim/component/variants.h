#pragma once

#include "zlmim/component/abi.h"
#include "zlmim/component/types.h"

#include <cstdint>

namespace ZLMIM::Component
{

/// The variant that `variant` refers to, or `variant` itself.
[[nodiscard]] inline VARIANT& Dereferenced(VARIANT& variant) noexcept
{
    const bool isReference = variant.vt == (VT_VARIANT | VT_BYREF) && variant.pvarVal;
    return isReference ? *variant.pvarVal : variant;
}

/// The type of the value that the variant holds or refers to.
[[nodiscard]] inline VARTYPE TypeOf(VARIANT variant) noexcept
{
    return static_cast<VARTYPE>(Dereferenced(variant).vt & ~VT_BYREF);
}

/// Whether the variant holds, or refers to, a record of that type.
[[nodiscard]] bool HoldsRecord(const VARIANT& variant, const RecordType& type) noexcept;

/// Puts a copy of the record into an empty variant.
[[nodiscard]] HRESULT StoreRecord(VARIANT& variant, const RecordType& type, void* record) noexcept;

/// The number that `index` holds, converted if necessary.
/// @throws Failure `E_INVALIDARG` if it holds text, which would be a key, or no number
[[nodiscard]] std::int32_t ToNumber(const VARIANT& index);

/// @throws Failure `E_INVALIDARG` unless the argument was omitted: lists have no keys, and append only
void RefuseKey(const VARIANT& argument);

} // namespace ZLMIM::Component
