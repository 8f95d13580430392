#include "zlmim/component/classes.h"
#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/registration.h"
#include "zlmim/component/status.h"

#include <algorithm>
#include <string>
#include <vector>

namespace ZLMIM::Component
{
namespace
{

void Check(HRESULT status)
{
    if (FAILED(status))
        throw Failure{status};
}

void CheckRegistry(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw Failure{HRESULT_FROM_WIN32(static_cast<unsigned long>(status))};
}

/// The file of this module.
[[nodiscard]] std::u16string ModulePath()
{
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!::GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ModulePath), &module))
        throw Failure{HRESULT_FROM_WIN32(::GetLastError())};
    for (std::size_t size = MAX_PATH;; size *= 2)
    {
        std::vector<wchar_t> path(size);
        const DWORD length = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(size));
        if (length == 0)
            throw Failure{HRESULT_FROM_WIN32(::GetLastError())};
        if (length < size)
            return {path.begin(), path.begin() + static_cast<std::ptrdiff_t>(length)};
    }
}

[[nodiscard]] std::wstring Wide(const std::u16string& text) { return {text.begin(), text.end()}; }

[[nodiscard]] Pointer<ITypeInfo> FindTypeInfo(REFGUID guid)
{
    Pointer<ITypeLib> library;
    // By the file, whether or not it's registered.
    Check(::LoadTypeLibEx(Wide(ModulePath()).c_str(), REGKIND_NONE, library.Out()));
    Pointer<ITypeInfo> info;
    Check(library->GetTypeInfoOfGuid(guid, info.Out()));
    return info;
}

/// A key of the registry, open.
class Key
{
public:
    explicit Key(const std::u16string& name)
    {
        CheckRegistry(::RegCreateKeyExW(HKEY_CLASSES_ROOT, Wide(name).c_str(), 0, nullptr, 0, KEY_WRITE,
                                        nullptr, &mKey, nullptr));
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { ::RegCloseKey(mKey); }

    void Set(const std::u16string& name, const std::u16string& value) const
    {
        const std::wstring text = Wide(value);
        CheckRegistry(::RegSetValueExW(mKey, Wide(name).c_str(), 0, REG_SZ,
                                       reinterpret_cast<const BYTE*>(text.c_str()),
                                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
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
    return Guarded([&] { Check(::GetRecordInfoFromTypeInfo(FindTypeInfo(type.guid).Get(), info)); });
}

HRESULT Coerce(VARIANT& to, VARIANT& from, VARTYPE type) noexcept
{
    return ::VariantChangeType(&to, &from, 0, type);
}

HRESULT Register() noexcept
{
    return Guarded(
        []
        {
            for (const RegistryEntry& entry : Registration(ModulePath()))
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
            auto entries = Registration(ModulePath());
            // From the innermost outwards. A key in which something else lies by now isn't ours alone, and
            // stays.
            std::reverse(entries.begin(), entries.end());
            for (const RegistryEntry& entry : entries)
            {
                const LSTATUS status = ::RegDeleteKeyW(HKEY_CLASSES_ROOT, Wide(entry.key).c_str());
                if (status != ERROR_FILE_NOT_FOUND && status != ERROR_ACCESS_DENIED)
                    CheckRegistry(status);
            }
        });
}

} // namespace ZLMIM::Component
