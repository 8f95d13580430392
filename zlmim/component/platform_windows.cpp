#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/registration.h"
#include "zlmim/component/status.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Component
{
namespace
{

void Check(HRESULT status)
{
    if (FAILED(status))
        throw Failure{status, "a function of the system failed"};
}

void CheckError(DWORD error)
{
    if (error != ERROR_SUCCESS)
        Check(HRESULT_FROM_WIN32(error));
}

/// The file of this module.
[[nodiscard]] std::u16string ModulePath()
{
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!::GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ModulePath), &module))
        CheckError(::GetLastError());
    for (std::size_t size = MAX_PATH;; size *= 2)
    {
        std::vector<wchar_t> path(size);
        const DWORD length = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(size));
        if (length == 0)
            CheckError(::GetLastError());
        if (length < size)
            return {path.begin(), path.begin() + static_cast<std::ptrdiff_t>(length)};
    }
}

[[nodiscard]] std::wstring Wide(const std::u16string& text) { return {text.begin(), text.end()}; }

[[nodiscard]] Pointer<ITypeInfo> FindTypeInfo(REFGUID guid)
{
    Pointer<ITypeLib> library;
    // From the module's file, so that it needn't be registered.
    Check(::LoadTypeLibEx(Wide(ModulePath()).c_str(), REGKIND_NONE, library.Out()));
    Pointer<ITypeInfo> info;
    Check(library->GetTypeInfoOfGuid(guid, info.Out()));
    return info;
}

/// The record infos by their places in `kRecordTypes`; null until needed. Each one keeps the type library
/// loaded, which takes half a millisecond to load.
std::mutex recordInfosMutex;
IRecordInfo* recordInfos[std::size(kRecordTypes)];

[[nodiscard]] std::optional<std::u16string> ReadRegistry(const std::u16string& key)
{
    // All values that are of interest are shorter.
    wchar_t text[64] = {};
    auto size = static_cast<DWORD>(sizeof(text));
    const LSTATUS status =
        ::RegGetValueW(HKEY_CLASSES_ROOT, Wide(key).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size);
    if (status == ERROR_SUCCESS)
        return std::u16string(text, text + ::lstrlenW(text));
    HKEY found = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, Wide(key).c_str(), 0, KEY_READ, &found) != ERROR_SUCCESS)
        return std::nullopt;
    ::RegCloseKey(found);
    return std::u16string();
}

/// A key of the registry, open.
class Key
{
public:
    explicit Key(const std::u16string& name)
    {
        CheckError(static_cast<DWORD>(::RegCreateKeyExW(HKEY_CLASSES_ROOT, Wide(name).c_str(), 0, nullptr, 0,
                                                        KEY_WRITE, nullptr, &mKey, nullptr)));
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { ::RegCloseKey(mKey); }

    void Set(const std::u16string& name, const std::u16string& value) const
    {
        const std::wstring text = Wide(value);
        CheckError(static_cast<DWORD>(
            ::RegSetValueExW(mKey, Wide(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                             static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)))));
    }

private:
    HKEY mKey = nullptr;
};

} // namespace

HRESULT GetTypeInfoOf(REFIID iid, ITypeInfo** info) noexcept
{
    return Guarded([&] { *info = FindTypeInfo(iid).Detach(); });
}

UINT TypeInfoCount() noexcept { return 1; }

HRESULT GetRecordInfo(const RecordType& type, IRecordInfo** info) noexcept
{
    *info = nullptr;
    return Guarded(
        [&]
        {
            const std::lock_guard lock(recordInfosMutex);
            const auto place = std::find(std::begin(kRecordTypes), std::end(kRecordTypes), &type);
            IRecordInfo*& cached = recordInfos[place - std::begin(kRecordTypes)];
            if (!cached)
                Check(::GetRecordInfoFromTypeInfo(FindTypeInfo(type.guid).Get(), &cached));
            cached->AddRef();
            *info = cached;
        });
}

void FreeCaches() noexcept
{
    const std::lock_guard lock(recordInfosMutex);
    for (IRecordInfo*& cached : recordInfos)
    {
        if (cached)
            std::exchange(cached, nullptr)->Release();
    }
}

HRESULT Coerce(VARIANT& to, VARIANT& from, VARTYPE type) noexcept
{
    return ::VariantChangeType(&to, &from, 0, type);
}

void SetError(const ClassInfo& source, const char* text) noexcept
{
    ::SetErrorInfo(0, nullptr);
    static_cast<void>(Guarded(
        [&]
        {
            Pointer<ICreateErrorInfo> created;
            Check(::CreateErrorInfo(created.Out()));
            const auto decoded = FromUtf8(text);
            Check(created->SetGUID(source.Interface().guid));
            Check(created->SetSource(Wide(ProgId(source)).data()));
            Check(created->SetDescription(Wide(decoded ? *decoded : FromWindows1252(text)).data()));
            Pointer<IErrorInfo> error;
            Check(created->QueryInterface(kIErrorInfo, error.OutAny()));
            Check(::SetErrorInfo(0, error.Get()));
        }));
}

void TakeError(EXCEPINFO& exception) noexcept
{
    Pointer<IErrorInfo> error;
    if (::GetErrorInfo(0, error.Out()) != S_OK)
        return;
    error->GetSource(&exception.bstrSource);
    error->GetDescription(&exception.bstrDescription);
}

HRESULT Register() noexcept
{
    return Guarded(
        []
        {
            for (const RegistryEntry& entry : EntriesToAdd(ModulePath(), &ReadRegistry))
            {
                const Key key(entry.key);
                if (entry.value)
                    key.Set(entry.name, *entry.value);
            }
        });
}

HRESULT Unregister() noexcept
{
    return Guarded(
        []
        {
            for (const RegistryEntry& entry : EntriesToRemove(ModulePath(), &ReadRegistry))
            {
                const LSTATUS status = ::RegDeleteKeyW(HKEY_CLASSES_ROOT, Wide(entry.key).c_str());
                // A key to which others have added subkeys isn't ours alone, and stays.
                if (status != ERROR_FILE_NOT_FOUND && status != ERROR_ACCESS_DENIED)
                    CheckError(static_cast<DWORD>(status));
            }
        });
}

} // namespace ZLMIM::Component
