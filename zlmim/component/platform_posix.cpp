#include "zlmim/component/holders.h"
#include "zlmim/component/live_count.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"
#include "zlmim/component/variants.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace ZLMIM::Component
{
namespace
{

/// Tells variants how large a record is. Records have no fields by name here. There is one for each type,
/// always: references only keep the module loaded.
class RecordInfo final : public IRecordInfo
{
public:
    explicit constexpr RecordInfo(const RecordType& type) : mType(type) {}
    RecordInfo(const RecordInfo&) = delete;
    RecordInfo& operator=(const RecordInfo&) = delete;

    [[nodiscard]] bool IsOf(const RecordType& type) const noexcept { return IsSame(mType.guid, type.guid); }

    HRESULT QueryInterface(REFIID iid, void** object) noexcept override
    {
        if (!object)
            return E_POINTER;
        const bool isOffered = IsSame(iid, kIUnknown) || IsSame(iid, kIRecordInfo);
        *object = isOffered ? this : nullptr;
        if (!isOffered)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() noexcept override { return static_cast<ULONG>(++LiveCount); }
    ULONG Release() noexcept override { return static_cast<ULONG>(--LiveCount); }
    HRESULT RecordInit(void* record) noexcept override
    {
        if (!record)
            return E_INVALIDARG;
        std::memset(record, 0, mType.size);
        return S_OK;
    }
    HRESULT RecordClear(void* record) noexcept override { return RecordInit(record); }
    HRESULT RecordCopy(void* from, void* to) noexcept override
    {
        if (!from || !to)
            return E_INVALIDARG;
        std::memmove(to, from, mType.size);
        return S_OK;
    }
    HRESULT GetGuid(GUID* guid) noexcept override { return Give(guid, mType.guid); }
    HRESULT GetName(BSTR* name) noexcept override
    {
        if (const HRESULT status = Give<BSTR>(name, nullptr); FAILED(status))
            return status;
        const std::string_view given(mType.name);
        return Guarded([&] { *name = Text::Allocate(std::u16string(given.begin(), given.end())); });
    }
    HRESULT GetSize(ULONG* size) noexcept override { return Give(size, static_cast<ULONG>(mType.size)); }
    HRESULT GetTypeInfo(ITypeInfo** info) noexcept override
    {
        const HRESULT status = Give<ITypeInfo*>(info, nullptr);
        return FAILED(status) ? status : E_NOTIMPL;
    }
    HRESULT GetField(void*, LPCOLESTR, VARIANT*) noexcept override { return E_NOTIMPL; }
    HRESULT GetFieldNoCopy(void*, LPCOLESTR, VARIANT*, void**) noexcept override { return E_NOTIMPL; }
    HRESULT PutField(ULONG, void*, LPCOLESTR, VARIANT*) noexcept override { return E_NOTIMPL; }
    HRESULT PutFieldNoCopy(ULONG, void*, LPCOLESTR, VARIANT*) noexcept override { return E_NOTIMPL; }
    HRESULT GetFieldNames(ULONG*, BSTR*) noexcept override { return E_NOTIMPL; }
    BOOL IsMatchingType(IRecordInfo* other) noexcept override
    {
        GUID guid{};
        return other && SUCCEEDED(other->GetGuid(&guid)) && IsSame(guid, mType.guid);
    }
    void* RecordCreate() noexcept override { return std::calloc(1, mType.size); }
    HRESULT RecordCreateCopy(void* from, void** copy) noexcept override
    {
        if (const HRESULT status = Give<void*>(copy, nullptr); FAILED(status))
            return status;
        if (!from)
            return E_INVALIDARG;
        *copy = std::malloc(mType.size);
        return *copy ? RecordCopy(from, *copy) : E_OUTOFMEMORY;
    }
    HRESULT RecordDestroy(void* record) noexcept override
    {
        std::free(record);
        return S_OK;
    }

private:
    template <class T>
    static HRESULT Give(T* place, T value) noexcept
    {
        if (!place)
            return E_POINTER;
        *place = value;
        return S_OK;
    }

    const RecordType& mType;
};

/// The number that a variant holds, or refers to.
[[nodiscard]] std::optional<double> NumberOf(const VARIANT& variant)
{
    const void* const place = (variant.vt & VT_BYREF) != 0 ? variant.byref : &variant.lVal;
    const auto read = [&](auto number)
    {
        std::memcpy(&number, place, sizeof(number));
        return static_cast<double>(number);
    };
    switch (place ? variant.vt & ~VT_BYREF : VT_NULL)
    {
    case VT_EMPTY:
        return 0;
    case VT_I2:
    case VT_BOOL:
        return read(SHORT{});
    case VT_I4:
        return read(LONG{});
    case VT_R4:
        return read(float{});
    case VT_R8:
        return read(double{});
    default:
        return std::nullopt;
    }
}

} // namespace

HRESULT GetTypeInfoOf(REFIID, ITypeInfo**) noexcept { return E_NOTIMPL; }

UINT TypeInfoCount() noexcept { return 0; }

HRESULT GetRecordInfo(const RecordType& type, IRecordInfo** info) noexcept
{
    static RecordInfo infos[] = {RecordInfo(kRecordType<Vector>),   RecordInfo(kRecordType<Quaternion>),
                                 RecordInfo(kRecordType<Vertex>),   RecordInfo(kRecordType<Matrix>),
                                 RecordInfo(kRecordType<Keyframe>), RecordInfo(kRecordType<rgbColour>)};
    *info = nullptr;
    for (RecordInfo& candidate : infos)
    {
        if (candidate.IsOf(type))
        {
            candidate.AddRef();
            *info = &candidate;
            return S_OK;
        }
    }
    return E_INVALIDARG;
}

HRESULT Coerce(VARIANT& to, VARIANT& from, VARTYPE type) noexcept
{
    if (from.vt == type)
        return VariantCopy(&to, &from);
    const auto number = NumberOf(from);
    if (!number)
        return DISP_E_TYPEMISMATCH;
    VariantClear(&to);
    // To the nearest whole number, to the even one of two as near.
    const double rounded = std::nearbyint(*number);
    switch (type)
    {
    case VT_I4:
        if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
            return DISP_E_OVERFLOW;
        to.lVal = static_cast<LONG>(rounded);
        break;
    case VT_R4:
        if (std::isfinite(*number) && std::isinf(static_cast<float>(*number)))
            return DISP_E_OVERFLOW;
        to.fltVal = static_cast<float>(*number);
        break;
    case VT_BOOL:
        to.boolVal = *number != 0 ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    default:
        return DISP_E_TYPEMISMATCH;
    }
    to.vt = type;
    return S_OK;
}

HRESULT Register() noexcept { return S_FALSE; }

HRESULT Unregister() noexcept { return S_FALSE; }

} // namespace ZLMIM::Component
