#pragma once

#include "validate.h"

#include <ostream>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// Writes an HTML page that needs no other file: the findings by asset, each asset with its picture.
/// `pictures` are the bytes of PNG files, one for each of `result.Configs`, or empty if there is no picture.
void WritePage(const Result& result, const std::vector<std::string>& pictures, std::ostream& out);

} // namespace ZLMIM::Validate
