#ifndef ZLMIM_COMPONENT_VARIANTS_H
#define ZLMIM_COMPONENT_VARIANTS_H

#include "zlmim/component/abi.h"
#include "zlmim/component/types.h"

namespace ZLMIM::Component
{

/// The variant that `variant` refers to, or itself.
[[nodiscard]] inline VARIANT& Dereferenced(VARIANT& variant) noexcept
{
    const bool isReference = variant.vt == (VT_VARIANT | VT_BYREF) && variant.pvarVal;
    return isReference ? *variant.pvarVal : variant;
}

/// Whether the variant holds, or refers to, a record of that type.
[[nodiscard]] bool HoldsRecord(const VARIANT& variant, const RecordType& type) noexcept;

/// Puts a copy of the record into an empty variant.
[[nodiscard]] HRESULT StoreRecord(VARIANT& variant, const RecordType& type, void* record) noexcept;

/// Whether the variant stands for an argument that was left out.
[[nodiscard]] bool IsLeftOut(const VARIANT& variant) noexcept;

} // namespace ZLMIM::Component

#endif
