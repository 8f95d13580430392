#pragma once

#include "zlmim/config/mesh_table_parser.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

struct ConfigKeys
{
    /// The closed entries of all mesh tables, in the order of the model's.
    std::vector<MeshTableKeys> Entries;
    /// The entry that isn't closed before the end of the file: the model doesn't have it.
    std::optional<MeshTableKeys> OpenEntry;
    /// All `bogey` keys, and `pantograph`.
    std::vector<ConfigLine> References;
    ConfigLine AssetFileName;
    /// Why the file can't be read to its end, and the line of the key concerned. Empty and 0 if it can.
    std::string Error;
    std::int64_t ErrorLine = 0;
};

/// Reads the keys that hold names of files, assets, entries and attachment points, as a model reads them.
/// @throws BoundsError if the file exceeds the limits of a load.
[[nodiscard]] ConfigKeys ReadConfigKeys(TextStream& stream);

} // namespace ZLMIM::Validate
