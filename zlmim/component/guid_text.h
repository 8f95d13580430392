#ifndef ZLMIM_COMPONENT_GUID_TEXT_H
#define ZLMIM_COMPONENT_GUID_TEXT_H

#include "zlmim/component/abi.h"

#include <string>

namespace ZLMIM::Component
{

/// The identifier as text, in capitals and without braces.
[[nodiscard]] std::string ToString(const GUID& guid);

} // namespace ZLMIM::Component

#endif
