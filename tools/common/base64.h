#ifndef ZLMIM_TOOLS_COMMON_BASE64_H
#define ZLMIM_TOOLS_COMMON_BASE64_H

#include <string>
#include <string_view>

namespace ZLMIM::Tools
{

[[nodiscard]] std::string Base64(std::string_view bytes);

} // namespace ZLMIM::Tools

#endif
