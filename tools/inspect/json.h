#pragma once

#include "tools/common/asset.h"

#include <iosfwd>

namespace ZLMIM::Inspect
{

/// Writes every property of the object that a host can read, as one JSON object on one line. Its first key is
/// "Load": what the load returned, or the name of the exception that it threw.
void WriteJson(const Tools::Asset& asset, std::ostream& out);

} // namespace ZLMIM::Inspect
