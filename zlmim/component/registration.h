#ifndef ZLMIM_COMPONENT_REGISTRATION_H
#define ZLMIM_COMPONENT_REGISTRATION_H

#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Component
{

/// One value of the registry, below the root of classes, or a key alone.
struct RegistryEntry
{
    std::u16string key;
    /// Empty for the key's own value.
    std::u16string name;
    std::optional<std::u16string> value;
};

/// All that registering a module enters: the library with its version, the classes by identifier and by name,
/// and the interfaces with all their identifiers. A key stands behind those that it lies in.
[[nodiscard]] std::vector<RegistryEntry> Registration(const std::u16string& modulePath);

} // namespace ZLMIM::Component

#endif
