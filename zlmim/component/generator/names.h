#ifndef ZLMIM_COMPONENT_GENERATOR_NAMES_H
#define ZLMIM_COMPONENT_GENERATOR_NAMES_H

#include "zlmim/component/classes.h"

#include <string>
#include <vector>

namespace ZLMIM::Component
{

/// All interfaces in the order of the type library, the list's first.
[[nodiscard]] inline std::vector<const ClassInfo*> Interfaces()
{
    std::vector<const ClassInfo*> interfaces{&CollectionInfo()};
    const auto classes = Classes();
    interfaces.insert(interfaces.end(), classes.begin(), classes.end());
    return interfaces;
}

/// Such as "1.3".
[[nodiscard]] inline std::string Version(const InterfaceId& interface)
{
    return "1." + std::to_string(interface.minorVersion);
}

} // namespace ZLMIM::Component

#endif
