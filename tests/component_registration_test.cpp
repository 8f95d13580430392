#include "component_classes.h"
#include "zlmim/component/registration.h"

#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace ZLMIM::Testing
{
namespace
{

using Registry = std::map<std::u16string, std::u16string>;
Registry registry;

[[nodiscard]] std::optional<std::u16string> Look(const std::u16string& key)
{
    const auto found = registry.find(key);
    return found == registry.end() ? std::nullopt : std::optional(found->second);
}

TEST(Registration, WritesAllIdentifiersAndKeepsThoseOfOthers)
{
    const std::u16string collection = u"Interface\\{A4C46780-499F-101B-BB78-00AA00383CBB}";
    const std::u16string library = u"TypeLib\\{C0809775-1978-4774-BA3F-7A1E622C8515}\\14.1";
    const std::u16string module = u"C:\\zlm\\ZLMIMFile.dll";
    const auto keysOf = [](const std::vector<Component::RegistryEntry>& entries)
    {
        std::set<std::u16string> keys;
        for (const auto& entry : entries)
            keys.insert(entry.key);
        return keys;
    };
    registry.clear();
    auto keys = keysOf(Component::EntriesToAdd(module, &Look));
    const auto wide = [](const GUID& guid)
    {
        const std::string text = Component::ToString(guid);
        return u"{" + std::u16string(text.begin(), text.end()) + u"}";
    };
    for (const ExpectedClass& expected : kExpectedClasses)
    {
        const std::string name(expected.name);
        EXPECT_TRUE(keys.contains(u"CLSID\\" + wide(expected.classId) + u"\\InprocServer32")) << name;
        EXPECT_TRUE(keys.contains(u"Interface\\" + wide(expected.interfaceId) + u"\\TypeLib")) << name;
        EXPECT_TRUE(keys.contains(u"ZLMIM." + std::u16string(name.begin(), name.end()) + u"\\CLSID")) << name;
    }
    for (const GUID& older : kOlderMeshIds)
        EXPECT_TRUE(keys.contains(u"Interface\\" + wide(older) + u"\\ProxyStubClsid32"));
    EXPECT_TRUE(keys.contains(collection));
    for (const auto& entry : Component::EntriesToAdd(module, &Look))
        registry[entry.key] = entry.name.empty() && entry.value ? *entry.value : registry[entry.key];
    EXPECT_EQ(keysOf(Component::EntriesToRemove(module, &Look)), keys);
    EXPECT_EQ(registry[library + u"\\HELPDIR"], u"C:\\zlm");

    // The other build is registered too, and another library has the list interface.
    registry[library + (sizeof(void*) == 8 ? u"\\0\\win32" : u"\\0\\win64")] = u"C:\\other\\ZLMIMFile.dll";
    registry[collection + u"\\TypeLib"] = u"{00000000-0000-0000-0000-000000000001}";
    keys = keysOf(Component::EntriesToRemove(module, &Look));
    EXPECT_FALSE(keys.contains(collection));
    EXPECT_FALSE(keys.contains(u"ZLMIM.Mesh\\CLSID"));
    EXPECT_FALSE(keys.contains(library + u"\\FLAGS"));
    EXPECT_TRUE(keys.contains(library + (sizeof(void*) == 8 ? u"\\409\\win64" : u"\\409\\win32")));
    EXPECT_TRUE(keys.contains(u"CLSID\\{5EC8E051-39D2-469F-AD68-CEEC1A0E7729}"));
    EXPECT_FALSE(keysOf(Component::EntriesToAdd(module, &Look)).contains(collection));
}

} // namespace
} // namespace ZLMIM::Testing
