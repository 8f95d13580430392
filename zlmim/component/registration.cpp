#include "zlmim/component/registration.h"

#include "zlmim/component/classes.h"

#include <algorithm>
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

using Entries = std::vector<RegistryEntry>;

constexpr bool kIs64Bit = sizeof(void*) == 8;
constexpr const char16_t* kThisBuild = kIs64Bit ? u"\\win64" : u"\\win32";
constexpr const char16_t* kOtherBuild = kIs64Bit ? u"\\win32" : u"\\win64";
/// Type libraries are registered by version in hexadecimal digits.
constexpr const char16_t* kLibraryVersion = u"14.1";
static_assert(kLibrary.majorVersion == 0x14 && kLibrary.minorVersion == 0x1);
/// Marshals automation interfaces between apartments, by their type information.
constexpr const char16_t* kAutomationMarshaller = u"{00020424-0000-0000-C000-000000000046}";

[[nodiscard]] std::u16string LibraryKey() { return u"TypeLib\\" + Braced(kLibrary.guid); }

[[nodiscard]] std::u16string VersionKey() { return LibraryKey() + u"\\" + kLibraryVersion; }

void AddLibrary(Entries& entries, const std::u16string& modulePath)
{
    entries.push_back({LibraryKey(), {}, {}});
    entries.push_back({VersionKey(), {}, Wide(kLibrary.help)});
    entries.push_back({VersionKey() + u"\\FLAGS", {}, u"0"});
    // The locale and the neutral one, which is the only one that some systems use for marshalling.
    for (const char16_t* const locale : {u"\\409", u"\\0"})
    {
        entries.push_back({VersionKey() + locale, {}, {}});
        entries.push_back({VersionKey() + locale + kThisBuild, {}, modulePath});
    }
    entries.push_back({VersionKey() + u"\\HELPDIR", {}, modulePath.substr(0, modulePath.rfind(u'\\'))});
}

void AddServer(Entries& entries, const std::u16string& key, const std::u16string& description,
               const std::u16string& modulePath, const std::u16string& threading)
{
    entries.push_back({key, {}, description});
    entries.push_back({key + u"\\InprocServer32", {}, modulePath});
    entries.push_back({key + u"\\InprocServer32", u"ThreadingModel", threading});
}

void AddClass(Entries& entries, const ClassInfo& info, const std::u16string& modulePath)
{
    const std::u16string key = u"CLSID\\" + Braced(info.classId);
    const std::u16string name = ProgId(info);
    const std::u16string description = info.help ? Wide(info.help) : name;
    AddServer(entries, key, description, modulePath, u"Apartment");
    entries.push_back({key + u"\\ProgID", {}, name});
    entries.push_back({key + u"\\Programmable", {}, {}});
    entries.push_back({key + u"\\TypeLib", {}, Braced(kLibrary.guid)});
    entries.push_back({key + u"\\Version", {}, Version(info.Interface())});
    entries.push_back({name, {}, description});
    entries.push_back({name + u"\\CLSID", {}, Braced(info.classId)});
}

void AddInterface(Entries& entries, const InterfaceId& id, const std::u16string& marshaller)
{
    const std::u16string key = u"Interface\\" + Braced(id.guid);
    entries.push_back({key, {}, Wide(id.name)});
    entries.push_back({key + u"\\ProxyStubClsid32", {}, marshaller});
    entries.push_back({key + u"\\TypeLib", {}, Braced(kLibrary.guid)});
    entries.push_back({key + u"\\TypeLib", u"Version", kLibraryVersion});
}

/// Both builds see the same keys of these trees; `CLSID` and `Interface` exist once for each.
[[nodiscard]] bool IsShared(const RegistryEntry& entry)
{
    return (entry.key.starts_with(u"TypeLib\\") || entry.key.starts_with(Wide(kLibrary.name) + u".")) &&
           !entry.key.ends_with(kThisBuild);
}

} // namespace

std::u16string ProgId(const ClassInfo& info) { return Wide(kLibrary.name) + u"." + Wide(info.name); }

std::vector<RegistryEntry> EntriesToAdd(const std::u16string& modulePath, ReadKey read)
{
    Entries entries;
    AddLibrary(entries, modulePath);
    for (const ClassInfo* const info : Classes())
    {
        AddClass(entries, *info, modulePath);
        AddInterface(entries, info->Interface(), kAutomationMarshaller);
        if (const GUID* const marshaller = OlderMarshaller(*info))
        {
            // The automation marshaller finds no members in the type library's aliases for these.
            AddServer(entries, u"CLSID\\" + Braced(*marshaller), u"PSFactoryBuffer", modulePath, u"Both");
            for (const InterfaceId& older : info->interfaces.first(info->interfaces.size() - 1))
                AddInterface(entries, older, Braced(*marshaller));
        }
    }
    const InterfaceId& collection = CollectionInfo().Interface();
    const std::u16string key = u"Interface\\" + Braced(collection.guid);
    if (!read(key) || read(key + u"\\TypeLib") == Braced(kLibrary.guid))
        AddInterface(entries, collection, kAutomationMarshaller);
    return entries;
}

std::vector<RegistryEntry> EntriesToRemove(const std::u16string& modulePath, ReadKey read)
{
    auto entries = EntriesToAdd(modulePath, read);
    if (read(VersionKey() + u"\\0" + kOtherBuild))
        std::erase_if(entries, IsShared);
    std::reverse(entries.begin(), entries.end());
    return entries;
}

} // namespace ZLMIM::Component
