#pragma once

#include "config_lines.h"
#include "finding.h"

#include <cstdint>
#include <vector>

namespace ZLMIM::Validate
{

/// Reports braces that are missing or too many, and repairs `lines`. Which brace it is can't be known for
/// sure, so each single change is tried, and the one after which the file looks most like a config is
/// reported.
///
/// Returns the first line concerned, or the largest number.
[[nodiscard]] std::int64_t RepairBraces(std::vector<TextLine>& lines, Report& report);

} // namespace ZLMIM::Validate
