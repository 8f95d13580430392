#ifndef ZLMIM_COMPONENT_GENERATOR_GENERATE_H
#define ZLMIM_COMPONENT_GENERATOR_GENERATE_H

#include <string>

namespace ZLMIM::Component
{

/// The files that tell other compilers what the tables of the classes tell this one. They stand in the
/// repository as well, since a cross-build can't run what makes them.

/// `host.h`, for hosts in C++.
[[nodiscard]] std::string GenerateHostHeader();
/// `ZLMIM.idl`, which the type library is compiled from.
[[nodiscard]] std::string GenerateIdl();
/// `ZLMIMFile.rc`, the module's resources on Windows.
[[nodiscard]] std::string GenerateResources();

} // namespace ZLMIM::Component

#endif
