#pragma once

#include "checked_files.h"
#include "config_keys.h"
#include "config_text.h"
#include "finding.h"
#include "kuid_search.h"
#include "located_file.h"

#include "zlmim/config/file_system.h"

#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// A reference that leads to an asset.
struct FoundReference
{
    Validate::Place Place;
    /// The config that a model loads.
    std::u16string Config;
};

/// Checks the asset's own kuid, and records it. Returns the kuid; empty if there is none.
[[nodiscard]] std::u16string CheckKuid(ConfigText text, const LocatedFile& file, CheckedFiles& checked,
                                       Report& report);

/// Checks that the assets that a config refers to can be found, by the search of a model whose working folder
/// is the config's. Also looks for further assets with the same kuid. `kuid` is the asset's own. Returns
/// those that are found.
[[nodiscard]] std::vector<FoundReference> CheckReferences(const std::u16string& config,
                                                          const std::u16string& kuid, const ConfigKeys& keys,
                                                          const ConfigText& text, FileSystem& files,
                                                          KuidSearch& search, Report& report);

} // namespace ZLMIM::Validate
