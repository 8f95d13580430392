#ifndef VALIDATE_CONFIG_CHECK_H
#define VALIDATE_CONFIG_CHECK_H

#include "config_text.h"
#include "finding.h"

#include <cstdint>

namespace ZLMIM::Validate
{

/// Checks the text of a config: braces, quotation marks, keys. Blocks other than the mesh table are only
/// checked for their braces, since nothing is known about their keys.
///
/// Returns the first line of a mistake after which the rest of the file means something else than its author
/// intended: what the model makes of lines from there on isn't worth a finding. The largest number if there
/// is none.
[[nodiscard]] std::int64_t CheckConfig(ConfigText& text, Report& report);

} // namespace ZLMIM::Validate

#endif
