#include "zlmim/component/variants.h"

#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"

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

std::int32_t ToNumber(const VARIANT& index)
{
    VARIANT given = index;
    Variant number;
    if (TypeOf(given) == VT_BSTR || FAILED(Coerce(number, Dereferenced(given), VT_I4)))
        throw Failure{E_INVALIDARG, "the index of an entry must be a number"};
    return static_cast<std::int32_t>(number.lVal);
}

void RefuseKey(const VARIANT& argument)
{
    const VARTYPE type = TypeOf(argument);
    VARIANT given = argument;
    const bool isMissing = type == VT_ERROR && Dereferenced(given).scode == DISP_E_PARAMNOTFOUND;
    if (type != VT_EMPTY && !isMissing)
        throw Failure{E_INVALIDARG, "a list has no keys, and appends only"};
}

} // namespace ZLMIM::Component
