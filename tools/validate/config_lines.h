#ifndef VALIDATE_CONFIG_LINES_H
#define VALIDATE_CONFIG_LINES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

/// A logical line of a config.
struct ConfigLine
{
    /// Lines of the file, from 1.
    std::int64_t First = 0;
    std::int64_t Last = 0;
    /// Columns of blanks before it.
    std::size_t Indent = 0;
    std::u16string Key;
    std::u16string Value;

    [[nodiscard]] bool IsOpening() const { return Key == u"{" && Value.empty(); }
    [[nodiscard]] bool IsClosing() const { return Key == u"}"; }
    /// A block whose opening brace is on its own line: `name {`.
    [[nodiscard]] bool IsBlock() const { return Value == u"{"; }
};

/// The known keys outside of blocks; `bogey` stands for all that begin with it.
[[nodiscard]] const std::vector<std::u16string>& TopKeys();
/// The known keys in an entry of the mesh table.
[[nodiscard]] const std::vector<std::u16string>& EntryKeyNames();

[[nodiscard]] bool IsTopKey(const std::u16string& key);
[[nodiscard]] bool IsEntryKey(const std::u16string& key);

} // namespace ZLMIM::Validate

#endif
