#include "zlmim/component/registration.h"

#include "zlmim/component/classes.h"
#include "zlmim/component/guid_text.h"

#include <string_view>
#include <utility>

namespace ZLMIM::Component
{
namespace
{

[[nodiscard]] std::u16string Wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

[[nodiscard]] std::u16string Braced(const GUID& guid) { return u"{" + Wide(ToString(guid)) + u"}"; }

[[nodiscard]] std::u16string Version(const InterfaceId& id)
{
    return u"1." + Wide(std::to_string(id.minorVersion));
}

/// Collects entries.
class Entries
{
public:
    void Key(std::u16string key) { mEntries.push_back({std::move(key), {}, std::nullopt}); }
    void Value(std::u16string key, std::u16string value)
    {
        mEntries.push_back({std::move(key), {}, std::move(value)});
    }
    void Named(std::u16string key, std::u16string name, std::u16string value)
    {
        mEntries.push_back({std::move(key), std::move(name), std::move(value)});
    }
    [[nodiscard]] std::vector<RegistryEntry> Take() { return std::move(mEntries); }

private:
    std::vector<RegistryEntry> mEntries;
};

const std::u16string_view kSystem = sizeof(void*) == 8 ? u"\\win64" : u"\\win32";
/// Type libraries go by version in hexadecimal digits.
constexpr std::u16string_view kLibraryVersion = u"14.1";
static_assert(kLibrary.majorVersion == 0x14 && kLibrary.minorVersion == 0x1);
/// What carries the calls of automation interfaces from one apartment to another.
constexpr std::u16string_view kMarshaller = u"{00020424-0000-0000-C000-000000000046}";

void EnterLibrary(Entries& entries, const std::u16string& modulePath)
{
    const std::u16string library = u"TypeLib\\" + Braced(kLibrary.guid);
    const std::u16string version = library + u"\\" + std::u16string(kLibraryVersion);
    entries.Key(library);
    entries.Value(version, Wide(kLibrary.help));
    entries.Value(version + u"\\FLAGS", u"0");
    // The locale, and the neutral one, the only one that some systems ask for when they carry calls.
    for (const std::u16string_view locale : {u"\\409", u"\\0"})
    {
        entries.Key(version + std::u16string(locale));
        entries.Value(version + std::u16string(locale) + std::u16string(kSystem), modulePath);
    }
    entries.Value(version + u"\\HELPDIR", modulePath.substr(0, modulePath.rfind(u'\\')));
}

void EnterClass(Entries& entries, const ClassInfo& info, const std::u16string& modulePath)
{
    const std::u16string key = u"CLSID\\" + Braced(info.classId);
    const std::u16string name = Wide(kLibrary.name) + u"." + Wide(info.name);
    const std::u16string description = info.help ? Wide(info.help) : name;
    entries.Value(key, description);
    entries.Value(key + u"\\InprocServer32", modulePath);
    entries.Named(key + u"\\InprocServer32", u"ThreadingModel", u"Apartment");
    entries.Value(key + u"\\ProgID", name);
    entries.Key(key + u"\\Programmable");
    entries.Value(key + u"\\TypeLib", Braced(kLibrary.guid));
    entries.Value(key + u"\\Version", Version(info.Interface()));
    entries.Value(name, description);
    entries.Value(name + u"\\CLSID", Braced(info.classId));
}

void EnterInterface(Entries& entries, const InterfaceId& id)
{
    const std::u16string key = u"Interface\\" + Braced(id.guid);
    entries.Value(key, Wide(id.name));
    entries.Value(key + u"\\ProxyStubClsid32", std::u16string(kMarshaller));
    entries.Value(key + u"\\TypeLib", Braced(kLibrary.guid));
    entries.Named(key + u"\\TypeLib", u"Version", std::u16string(kLibraryVersion));
}

} // namespace

std::vector<RegistryEntry> Registration(const std::u16string& modulePath)
{
    Entries entries;
    EnterLibrary(entries, modulePath);
    for (const ClassInfo* const info : Classes())
    {
        EnterClass(entries, *info, modulePath);
        for (const InterfaceId& id : info->interfaces)
            EnterInterface(entries, id);
    }
    return entries.Take();
}

} // namespace ZLMIM::Component
