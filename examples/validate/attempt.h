#ifndef VALIDATE_ATTEMPT_H
#define VALIDATE_ATTEMPT_H

#include "examples/asset.h"

#include <functional>
#include <string>

namespace ZLMIM::Validate
{

/// How a load ends: what it answers, or raises.
[[nodiscard]] Examples::Outcome Attempt(const std::function<bool()>& load);

/// What was raised, and what it said, printable.
[[nodiscard]] std::string Told(const Examples::Outcome& outcome);

} // namespace ZLMIM::Validate

#endif
