#pragma once

#include "tools/common/verb.h"

#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// The text of `zlmim --help`. help2man makes the man page from it.
[[nodiscard]] std::string HelpText(const std::vector<Verb>& verbs);

/// The text of `zlmim VERB --help`.
[[nodiscard]] std::string HelpText(const Verb& verb);

} // namespace ZLMIM::Tools
