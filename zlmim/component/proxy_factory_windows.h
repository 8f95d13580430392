#ifndef ZLMIM_COMPONENT_PROXY_FACTORY_WINDOWS_H
#define ZLMIM_COMPONENT_PROXY_FACTORY_WINDOWS_H

#include "zlmim/component/holders.h"

namespace ZLMIM::Component
{

/// Creates the object that marshals older identifiers of an interface between apartments, with the members of
/// its present one, `info`.
[[nodiscard]] HRESULT GetProxyFactory(const Pointer<ITypeInfo>& info, REFIID iid, void** object);

} // namespace ZLMIM::Component

#endif
