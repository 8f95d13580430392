#pragma once

#include "checked_files.h"
#include "kuid_search.h"
#include "located_file.h"

#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// Checks the asset of a config that has been claimed, with its meshes and animations, as a host loads it
/// whose working folder is the asset's. Returns the configs of the assets that it refers to, which aren't
/// checked here.
[[nodiscard]] std::vector<std::u16string> CheckAsset(const std::u16string& name, const LocatedFile& file,
                                                     const std::shared_ptr<PathResolver>& names,
                                                     CheckedFiles& checked, KuidSearch& search);

} // namespace ZLMIM::Validate
