#ifndef VALIDATE_JUDGE_REFERENCES_H
#define VALIDATE_JUDGE_REFERENCES_H

#include "config_keys.h"
#include "finding.h"
#include "kuid_search.h"

#include "zlmim/config/file_system.h"

#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// Looks for the assets that a config refers to, as a model would whose working folder is the config's, and
/// goes on behind the first that it finds. Answers the configs of those that a model loads.
[[nodiscard]] std::vector<std::u16string> JudgeReferences(const std::u16string& config,
                                                          const ConfigKeys& keys, FileSystem& files,
                                                          KuidSearch& search, Report& report);

} // namespace ZLMIM::Validate

#endif
