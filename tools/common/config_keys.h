#pragma once

#include "zlmim/config/config_line.h"
#include "zlmim/config/mesh_table_parser.h"
#include "zlmim/reader/path_resolver.h"

#include <memory>
#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// What a config says and its model doesn't keep: names that weren't found, and lines.
struct ConfigKeys
{
    /// The config's name in the object model's form.
    std::u16string File;
    /// The closed entries of all mesh tables. The model's entries are the first of them, in this order.
    std::vector<MeshTableKeys> Entries;
    /// Its keys that begin with `bogey`, in the order of `ZLMModel::BogieNames`. The value is "{" if
    /// the key opens a block, which is no reference, though the model has an empty one for it.
    std::vector<ConfigLine> Bogeys;
    /// An empty line if there is no such key.
    ConfigLine Pantograph;
    ConfigLine AssetFileName;
    /// Whether it has a line that isn't blank.
    bool HasText = false;
    /// Whether it has NUL bytes: then it is no text, or one of two bytes per character.
    bool HasNul = false;
};

/// Parses a config, as far as it can be read.
[[nodiscard]] ConfigKeys ReadConfigKeys(const std::u16string& config,
                                        const std::shared_ptr<PathResolver>& names);

} // namespace ZLMIM::Tools
