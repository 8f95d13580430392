#pragma once

#include "zlmim/component/class_info.h"

#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Component
{

/// One value in the registry, or only a key. Keys are relative to the root of classes.
struct RegistryEntry
{
    std::u16string key;
    /// Empty for the key's default value.
    std::u16string name;
    std::optional<std::u16string> value;
};

/// Returns the default value of a key in the registry as it is, and nothing if the key doesn't exist.
using ReadKey = std::optional<std::u16string> (*)(const std::u16string& key);

/// What registering a module adds: the library, the classes by identifier and by ProgID, and all identifiers
/// of the interfaces. A key comes after those that contain it. The platform's `_Collection` is included
/// unless another library has registered it.
[[nodiscard]] std::vector<RegistryEntry> EntriesToAdd(const std::u16string& modulePath, ReadKey read);

/// What unregistering removes, in the order of removal. The 32-bit and the 64-bit module share some keys, and
/// the one that is unregistered first leaves these to the other.
[[nodiscard]] std::vector<RegistryEntry> EntriesToRemove(const std::u16string& modulePath, ReadKey read);

/// Name of a class for scripts, such as "ZLMIM.Mesh".
[[nodiscard]] std::u16string ProgId(const ClassInfo& info);

/// The class that marshals the older interfaces of `info`: it bears the identifier of the oldest one. Null if
/// there are no older ones.
[[nodiscard]] inline const GUID* OlderMarshaller(const ClassInfo& info) noexcept
{
    return info.interfaces.size() > 1 ? &info.interfaces.front().guid : nullptr;
}

} // namespace ZLMIM::Component
