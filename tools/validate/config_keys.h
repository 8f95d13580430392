#ifndef VALIDATE_CONFIG_KEYS_H
#define VALIDATE_CONFIG_KEYS_H

#include "zlmim/config/file_system.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// A key of a config with its value, as the file has it: what a load makes of it doesn't tell what was asked
/// for.
struct ConfigKey
{
    std::u16string Key;
    std::u16string Value;
    /// Lines of the file that it takes, from 1; 0 for a key that isn't there.
    std::int64_t FirstLine = 0;
    std::int64_t LastLine = 0;

    [[nodiscard]] bool IsThere() const noexcept { return FirstLine > 0; }
};

/// An entry of a mesh table. Of a key that stands there twice, the last counts.
struct EntryKeys
{
    std::u16string Name;
    std::int64_t Line = 0;
    ConfigKey Mesh;
    ConfigKey Anim;
    ConfigKey AttParent;
    ConfigKey Att;
};

struct ConfigKeys
{
    /// The closed entries of all mesh tables, in the order of the model's.
    std::vector<EntryKeys> Entries;
    /// The entry that the file ends in, so that it isn't in the model.
    std::optional<EntryKeys> OpenEntry;
    /// All `bogey` keys, and `pantograph`.
    std::vector<ConfigKey> References;
    ConfigKey AssetFileName;
    /// What keeps the file from being read to its end, and the line of the key that it is about; empty and 0
    /// if it can be.
    std::string Trouble;
    std::int64_t TroubleLine = 0;
};

/// Reads the keys that hold names of files, assets, entries and attachment points, by the rules by which a
/// model reads them.
/// @throws BoundsError for more entries or references than a model takes.
[[nodiscard]] ConfigKeys ReadConfigKeys(TextStream& stream);

} // namespace ZLMIM::Validate

#endif
