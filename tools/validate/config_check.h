#pragma once

#include "config_text.h"
#include "finding.h"

#include <cstdint>

namespace ZLMIM::Validate
{

/// Checks the text of a config: braces, quotation marks, keys. Blocks other than the mesh table are only
/// checked for their braces, since nothing is known about their keys.
///
/// Returns the line of the first mistake that changes the meaning of the rest of the file: findings about the
/// model from there on would be misleading. Returns the largest number if there is no such mistake.
[[nodiscard]] std::int64_t CheckConfig(ConfigText& text, Report& report);

} // namespace ZLMIM::Validate
