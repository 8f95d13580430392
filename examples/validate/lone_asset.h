#ifndef VALIDATE_LONE_ASSET_H
#define VALIDATE_LONE_ASSET_H

#include "config_keys.h"

#include "examples/asset.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <string>

namespace ZLMIM::Validate
{

/// Loads the asset of a config, as a host does whose working folder is the asset's, but without the assets
/// that it refers to: those are loaded once a run each, and what ends the load of one mustn't end that of
/// another.
///
/// The model reads the file without its references, and with the asset's folder before each relative `anim`.
[[nodiscard]] Examples::Asset LoadLoneAsset(const std::u16string& name, const ConfigKeys& keys,
                                            const std::shared_ptr<PathResolver>& names);

} // namespace ZLMIM::Validate

#endif
