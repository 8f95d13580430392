#pragma once

// Unnamed structs in unnamed unions are an extension of C++, which the usual names of these fields need.
#pragma GCC system_header

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

/// \file
/// The names of `windows.h` and the automation headers that hosts need, for systems that lack these headers.
/// Interfaces are abstract classes without a virtual destructor; their functions are in the order of their
/// slots.
///
/// Modules pass texts (`BSTR`) and what a `VARIANT` owns to one another, so their allocation is part of the
/// interface: by `malloc`. A text has its length in bytes in the four bytes before its first character, and a
/// zero after its last one. `SysAllocStringLen`, `SysFreeString`, `VariantClear` and `VariantCopy` conform.
///
/// The names are documented by the system that they come from.
/// \ingroup hosts
/// \cond SYSTEM

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using INT = std::int32_t;
using BOOL = std::int32_t;
using HRESULT = std::int32_t;
using SCODE = std::int32_t;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using OLECHAR = char16_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using BSTR = OLECHAR*;

struct GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend constexpr bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
using REFGUID = const GUID&;

#define STDMETHODCALLTYPE
#define STDAPICALLTYPE

[[nodiscard]] constexpr bool SUCCEEDED(HRESULT status) noexcept { return status >= 0; }
[[nodiscard]] constexpr bool FAILED(HRESULT status) noexcept { return status < 0; }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006);
inline constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000B);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = static_cast<HRESULT>(0x8002000F);

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum VARENUM : VARTYPE
{
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_RECORD = 36,
    VT_BYREF = 0x4000,
};

inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;
inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;
inline constexpr DISPID DISPID_NEWENUM = -4;

struct IDispatch;
struct IRecordInfo;
struct ITypeInfo;

struct IUnknown
{
    virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;
};

struct VARIANT
{
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union
    {
        BYTE bVal;
        SHORT iVal;
        USHORT uiVal;
        LONG lVal;
        ULONG ulVal;
        std::int64_t llVal;
        std::uint64_t ullVal;
        float fltVal;
        double dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        LONG* plVal;
        float* pfltVal;
        VARIANT_BOOL* pboolVal;
        BSTR* pbstrVal;
        IDispatch** ppdispVal;
        VARIANT* pvarVal;
        void* byref;
        struct
        {
            void* pvRecord;
            IRecordInfo* pRecInfo;
        };
    };
};
using VARIANTARG = VARIANT;
static_assert(sizeof(VARIANT) == 8 + 2 * sizeof(void*));

/// The arguments of a call by name, the last one first.
struct DISPPARAMS
{
    VARIANTARG* rgvarg;
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO
{
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    DWORD dwHelpContext;
    void* pvReserved;
    HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
    SCODE scode;
};

struct IDispatch : IUnknown
{
    virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
    virtual HRESULT GetTypeInfo(UINT number, LCID locale, ITypeInfo** info) = 0;
    virtual HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) = 0;
    virtual HRESULT Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                           VARIANT* result, EXCEPINFO* exception, UINT* badArgument) = 0;
};

struct IClassFactory : IUnknown
{
    virtual HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) = 0;
    virtual HRESULT LockServer(BOOL lock) = 0;
};

struct IEnumVARIANT : IUnknown
{
    virtual HRESULT Next(ULONG count, VARIANT* entries, ULONG* fetched) = 0;
    virtual HRESULT Skip(ULONG count) = 0;
    virtual HRESULT Reset() = 0;
    virtual HRESULT Clone(IEnumVARIANT** copy) = 0;
};

struct ISupportErrorInfo : IUnknown
{
    virtual HRESULT InterfaceSupportsErrorInfo(REFIID iid) = 0;
};

struct IErrorInfo : IUnknown
{
    virtual HRESULT GetGUID(GUID* guid) = 0;
    virtual HRESULT GetSource(BSTR* source) = 0;
    virtual HRESULT GetDescription(BSTR* description) = 0;
    virtual HRESULT GetHelpFile(BSTR* file) = 0;
    virtual HRESULT GetHelpContext(DWORD* context) = 0;
};

struct IRecordInfo : IUnknown
{
    virtual HRESULT RecordInit(void* record) = 0;
    virtual HRESULT RecordClear(void* record) = 0;
    virtual HRESULT RecordCopy(void* from, void* to) = 0;
    virtual HRESULT GetGuid(GUID* guid) = 0;
    virtual HRESULT GetName(BSTR* name) = 0;
    virtual HRESULT GetSize(ULONG* size) = 0;
    virtual HRESULT GetTypeInfo(ITypeInfo** info) = 0;
    virtual HRESULT GetField(void* record, LPCOLESTR name, VARIANT* value) = 0;
    virtual HRESULT GetFieldNoCopy(void* record, LPCOLESTR name, VARIANT* value, void** array) = 0;
    virtual HRESULT PutField(ULONG flags, void* record, LPCOLESTR name, VARIANT* value) = 0;
    virtual HRESULT PutFieldNoCopy(ULONG flags, void* record, LPCOLESTR name, VARIANT* value) = 0;
    virtual HRESULT GetFieldNames(ULONG* count, BSTR* names) = 0;
    virtual BOOL IsMatchingType(IRecordInfo* other) = 0;
    virtual void* RecordCreate() = 0;
    virtual HRESULT RecordCreateCopy(void* from, void** copy) = 0;
    virtual HRESULT RecordDestroy(void* record) = 0;
};

/// A text of `length` characters, copied from `text`, or zeros if that is null. Null if there is no memory.
[[nodiscard]] inline BSTR SysAllocStringLen(const OLECHAR* text, UINT length) noexcept
{
    constexpr std::size_t kAround = sizeof(std::uint32_t) + sizeof(OLECHAR);
    const std::size_t size = std::size_t{length} * sizeof(OLECHAR);
    if (size > std::numeric_limits<std::uint32_t>::max() - kAround)
        return nullptr;
    auto* const memory = static_cast<char*>(std::calloc(1, kAround + size));
    if (!memory)
        return nullptr;
    const auto stored = static_cast<std::uint32_t>(size);
    std::memcpy(memory, &stored, sizeof(stored));
    if (text && size > 0)
        std::memcpy(memory + sizeof(stored), text, size);
    return reinterpret_cast<BSTR>(memory + sizeof(stored));
}

inline void SysFreeString(BSTR text) noexcept
{
    if (text)
        std::free(reinterpret_cast<char*>(text) - sizeof(std::uint32_t));
}

/// Number of characters. Null is the empty text.
[[nodiscard]] inline UINT SysStringLen(BSTR text) noexcept
{
    if (!text)
        return 0;
    std::uint32_t size = 0;
    std::memcpy(&size, reinterpret_cast<const char*>(text) - sizeof(size), sizeof(size));
    return size / static_cast<UINT>(sizeof(OLECHAR));
}

inline void VariantInit(VARIANT* variant) noexcept { *variant = {}; }

/// Frees what the variant owns and empties it.
inline HRESULT VariantClear(VARIANT* variant) noexcept
{
    if (variant->vt == VT_BSTR)
        SysFreeString(variant->bstrVal);
    else if ((variant->vt == VT_DISPATCH || variant->vt == VT_UNKNOWN) && variant->punkVal)
        variant->punkVal->Release();
    else if (variant->vt == VT_RECORD && variant->pRecInfo)
    {
        if (variant->pvRecord)
            variant->pRecInfo->RecordDestroy(variant->pvRecord);
        variant->pRecInfo->Release();
    }
    *variant = {};
    return S_OK;
}

/// Clears `to` and makes it a copy of `from` that owns what it holds.
inline HRESULT VariantCopy(VARIANT* to, const VARIANT* from) noexcept
{
    if (to == from)
        return S_OK;
    VARIANT copy = *from;
    if (from->vt == VT_BSTR)
    {
        copy.bstrVal = SysAllocStringLen(from->bstrVal, SysStringLen(from->bstrVal));
        if (!copy.bstrVal)
            return E_OUTOFMEMORY;
    }
    else if ((from->vt == VT_DISPATCH || from->vt == VT_UNKNOWN) && from->punkVal)
        from->punkVal->AddRef();
    else if (from->vt == VT_RECORD && from->pRecInfo)
    {
        if (from->pvRecord)
        {
            const HRESULT status = from->pRecInfo->RecordCreateCopy(from->pvRecord, &copy.pvRecord);
            if (FAILED(status))
                return status;
        }
        from->pRecInfo->AddRef();
    }
    VariantClear(to);
    *to = copy;
    return S_OK;
}

/// \endcond
