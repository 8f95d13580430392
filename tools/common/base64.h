#pragma once

#include <string>
#include <string_view>

namespace ZLMIM::Tools
{

[[nodiscard]] std::string Base64(std::string_view bytes);

} // namespace ZLMIM::Tools
