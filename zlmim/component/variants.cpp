#include "zlmim/component/variants.h"

#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"

namespace ZLMIM::Component
{

bool HoldsRecord(const VARIANT& variant, const RecordType& type) noexcept
{
    GUID guid{};
    return (variant.vt & ~VT_BYREF) == VT_RECORD && variant.pvRecord && variant.pRecInfo &&
           SUCCEEDED(variant.pRecInfo->GetGuid(&guid)) && IsSame(guid, type.guid);
}

HRESULT StoreRecord(VARIANT& variant, const RecordType& type, void* record) noexcept
{
    Pointer<IRecordInfo> info;
    if (const HRESULT status = GetRecordInfo(type, info.Out()); FAILED(status))
        return status;
    void* copy = nullptr;
    if (const HRESULT status = info->RecordCreateCopy(record, &copy); FAILED(status))
        return status;
    variant.vt = VT_RECORD;
    variant.pvRecord = copy;
    variant.pRecInfo = info.Detach();
    return S_OK;
}

bool IsLeftOut(const VARIANT& variant) noexcept
{
    return variant.vt == VT_EMPTY || (variant.vt == VT_ERROR && variant.scode == DISP_E_PARAMNOTFOUND);
}

} // namespace ZLMIM::Component
