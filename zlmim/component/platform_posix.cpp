#include "zlmim/component/com_object.h"
#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/registration.h"
#include "zlmim/component/status.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ZLMIM::Component
{
namespace
{

[[nodiscard]] std::u16string FromAscii(std::string_view text) { return {text.begin(), text.end()}; }

template <class T>
[[nodiscard]] HRESULT Store(T* place, T value) noexcept
{
    if (!place)
        return E_POINTER;
    *place = value;
    return S_OK;
}

[[nodiscard]] HRESULT StoreText(BSTR* place, const Text& text) noexcept
{
    const HRESULT status = Store<BSTR>(place, nullptr);
    return FAILED(status) ? status : Guarded([&] { *place = Text::Allocate(text.Copy()); });
}

/// Describes a record to variants, without its fields. One exists for each type all the time; references only
/// keep the module loaded.
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
    HRESULT GetGuid(GUID* guid) noexcept override { return Store(guid, mType.guid); }
    HRESULT GetName(BSTR* name) noexcept override
    {
        const HRESULT status = Store<BSTR>(name, nullptr);
        return FAILED(status) ? status : Guarded([&] { *name = Text::Allocate(FromAscii(mType.name)); });
    }
    HRESULT GetSize(ULONG* size) noexcept override { return Store(size, static_cast<ULONG>(mType.size)); }
    HRESULT GetTypeInfo(ITypeInfo** info) noexcept override
    {
        const HRESULT status = Store<ITypeInfo*>(info, nullptr);
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
        if (const HRESULT status = Store<void*>(copy, nullptr); FAILED(status))
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
    const RecordType& mType;
};

/// The number in a text: digits with an optional sign, point and exponent, and blanks around it.
/// @throws Failure
[[nodiscard]] long double ParseNumber(BSTR given)
{
    const Failure mismatch{DISP_E_TYPEMISMATCH, "not a number"};
    std::string text = ToUtf8(Text::Copy(given));
    const std::size_t start = std::min(text.find_first_not_of(' '), text.size());
    text = text.substr(start, text.find_last_not_of(' ') + 1 - start);
    std::string_view digits = text;
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    // Excludes a second sign, and names such as "inf", that from_chars would accept.
    if (digits.find_first_of("0123456789.") != 0)
        throw mismatch;
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::result_out_of_range)
        throw Failure{DISP_E_OVERFLOW, "too large a number"};
    if (error != std::errc() || end != digits.data() + digits.size())
        throw mismatch;
    return isNegative ? -number : number;
}

/// The number that a variant holds or refers to. Long double, which holds 64-bit integers exactly.
/// @throws Failure if it's no number
[[nodiscard]] long double NumberOf(const VARIANT& variant)
{
    const void* const place = (variant.vt & VT_BYREF) != 0 ? variant.byref : &variant.lVal;
    const auto read = [&](auto number)
    {
        std::memcpy(&number, place, sizeof(number));
        return number;
    };
    switch (place ? variant.vt & ~VT_BYREF : VT_NULL)
    {
    case VT_EMPTY:
        return 0;
    case VT_I1:
        return read(std::int8_t{});
    case VT_UI1:
        return read(std::uint8_t{});
    case VT_I2:
    case VT_BOOL:
        return read(std::int16_t{});
    case VT_UI2:
        return read(std::uint16_t{});
    case VT_I4:
    case VT_INT:
        return read(std::int32_t{});
    case VT_UI4:
    case VT_UINT:
        return read(std::uint32_t{});
    case VT_I8:
        return static_cast<long double>(read(std::int64_t{}));
    case VT_UI8:
        return static_cast<long double>(read(std::uint64_t{}));
    case VT_R4:
        return read(float{});
    case VT_R8:
        return read(double{});
    case VT_BSTR:
        return ParseNumber(read(BSTR{}));
    default:
        throw Failure{DISP_E_TYPEMISMATCH, "not a number"};
    }
}

/// A number as text: integers with all digits, others with as many as their type holds for certain.
[[nodiscard]] std::u16string TextOf(const VARIANT& variant)
{
    const int type = variant.vt & ~VT_BYREF;
    if (type == VT_EMPTY)
        return {};
    const long double number = NumberOf(variant);
    std::array<char, 64> text;
    const int digits = type == VT_R4 ? 7 : type == VT_R8 ? 15 : 20;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, digits).ptr;
    std::replace(text.data(), end, 'e', 'E');
    return FromAscii({text.data(), end});
}

/// @throws Failure
[[nodiscard]] LONG ToLong(long double number)
{
    // To the nearest integer, and to the even one of two equally near.
    const long double rounded = std::nearbyint(number);
    if (!(rounded >= -2147483648.0L && rounded <= 2147483647.0L))
        throw Failure{DISP_E_OVERFLOW, "too large a number"};
    return static_cast<LONG>(rounded);
}

/// @throws Failure
[[nodiscard]] float ToFloat(long double number)
{
    const auto converted = static_cast<float>(number);
    if (std::isfinite(number) && std::isinf(converted))
        throw Failure{DISP_E_OVERFLOW, "too large a number"};
    return converted;
}

/// To the types that members take.
/// @throws Failure
void Convert(VARIANT& to, const VARIANT& from, VARTYPE type)
{
    Variant converted;
    if (type == VT_I4)
        converted.lVal = ToLong(NumberOf(from));
    else if (type == VT_R4)
        converted.fltVal = ToFloat(NumberOf(from));
    else if (type == VT_BSTR)
        converted.bstrVal = Text::Allocate(TextOf(from));
    else
        throw Failure{DISP_E_TYPEMISMATCH, "not of that type"};
    converted.vt = type;
    std::swap(static_cast<VARIANT&>(converted), to);
}

struct ThreadError
{
    GUID guid{};
    Text source;
    Text description;
};

class ErrorInfo final : public ComObject<IErrorInfo>
{
public:
    explicit ErrorInfo(ThreadError error) : mError(std::move(error)) {}

    HRESULT QueryInterface(REFIID iid, void** object) noexcept override
    {
        return Share(object, IsSame(iid, kIUnknown) || IsSame(iid, kIErrorInfo));
    }
    HRESULT GetGUID(GUID* guid) noexcept override { return Store(guid, mError.guid); }
    HRESULT GetSource(BSTR* source) noexcept override { return StoreText(source, mError.source); }
    HRESULT GetDescription(BSTR* text) noexcept override { return StoreText(text, mError.description); }
    HRESULT GetHelpFile(BSTR* file) noexcept override { return Store<BSTR>(file, nullptr); }
    HRESULT GetHelpContext(DWORD* context) noexcept override { return Store<DWORD>(context, 0); }

private:
    ThreadError mError;
};

thread_local std::optional<ThreadError> threadError;

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
    return Guarded([&] { Convert(to, from, type); });
}

void FreeCaches() noexcept {}

void SetError(const ClassInfo& source, const char* text) noexcept
{
    threadError.reset();
    static_cast<void>(Guarded(
        [&]
        {
            const auto decoded = FromUtf8(text);
            threadError = ThreadError{source.Interface().guid, Text(ProgId(source)),
                                      Text(decoded ? *decoded : FromWindows1252(text))};
        }));
}

void TakeError(EXCEPINFO& exception) noexcept
{
    if (!threadError)
        return;
    exception.bstrSource = threadError->source.Detach();
    exception.bstrDescription = threadError->description.Detach();
    threadError.reset();
}

HRESULT GetSystemClassObject(REFCLSID classId, REFIID iid, void** object) noexcept
{
    if (!IsSame(classId, kIErrorInfo))
        return CLASS_E_CLASSNOTAVAILABLE;
    if (!threadError)
        return S_FALSE;
    return Guarded(
        [&]
        {
            const Pointer<ErrorInfo> info(new ErrorInfo(std::move(*threadError)));
            threadError.reset();
            if (const HRESULT status = info->QueryInterface(iid, object); FAILED(status))
                throw Failure{status, "an error has no such interface"};
        });
}

HRESULT Register() noexcept { return S_FALSE; }

HRESULT Unregister() noexcept { return S_FALSE; }

} // namespace ZLMIM::Component
