#pragma once

#include "zlmim/config/config_line.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// A logical line of a config, and its place among braces.
struct TextLine : ConfigLine
{
    /// Columns of blanks before it.
    std::size_t Indent = 0;

    [[nodiscard]] bool IsClosing() const { return Key == u"}"; }
    /// A block whose opening brace is on its own line: `name {`.
    [[nodiscard]] bool IsBlock() const { return Value == u"{"; }
};

/// The known keys outside of blocks; `bogey` is the beginning of several.
[[nodiscard]] const std::vector<std::u16string>& TopKeys();
/// The known keys in an entry of the mesh table.
[[nodiscard]] const std::vector<std::u16string>& EntryKeyNames();

[[nodiscard]] bool IsTopKey(const std::u16string& key);
[[nodiscard]] bool IsEntryKey(const std::u16string& key);

} // namespace ZLMIM::Validate
