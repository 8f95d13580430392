#ifndef VALIDATE_JUDGE_REFERENCES_H
#define VALIDATE_JUDGE_REFERENCES_H

#include "config_keys.h"
#include "config_text.h"
#include "finding.h"
#include "judged_files.h"
#include "kuid_search.h"
#include "located_file.h"

#include "zlmim/config/file_system.h"

#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// Checks the asset's own kuid, and notes whose it is. Returns it; empty if there is none.
[[nodiscard]] std::u16string JudgeKuid(ConfigText text, const LocatedFile& file, JudgedFiles& judged,
                                       Report& report);

/// Checks that the assets which a config refers to are found, as by a model whose working folder is the
/// config's, and looks for further assets with the same kuid. `kuid` is the asset's own. Returns the configs
/// of those that a model loads.
[[nodiscard]] std::vector<std::u16string> JudgeReferences(const std::u16string& config,
                                                          const std::u16string& kuid, const ConfigKeys& keys,
                                                          const ConfigText& text, FileSystem& files,
                                                          KuidSearch& search, Report& report);

} // namespace ZLMIM::Validate

#endif
