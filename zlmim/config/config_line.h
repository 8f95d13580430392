#pragma once

#include "zlmim/config/line_reader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// A logical line of a config file: one key and one value, from one or more lines of the file.
/// \ingroup inside
struct ConfigLine
{
    /// In lower case; may be empty.
    std::u16string Key;
    /// As in the file, without the quotation marks around it; may be empty.
    std::u16string Value;
    /// The line of the file where it begins, from 1; 0 if there is no line.
    std::int64_t FirstLine = 0;
    /// The line where it ends.
    std::int64_t LastLine = 0;

    /// A line with only "{", which may open a block whose name is on a line of its own.
    [[nodiscard]] bool IsLoneBrace() const { return Key == u"{" && Value.empty(); }
};

/// Reads the next logical line. No other code splits the lines of config files.
///
/// A logical line is one line of the file: a key, which is converted to lower case here, and the value after
/// any blanks and tabs. A value that begins with a quotation mark continues over further lines until one ends
/// in a quotation mark. The lines are joined with CR LF, and the two marks are dropped. If the file ends
/// before or with that last line, the value keeps its marks. There are no comments, and braces are ordinary
/// keys and values.
/// @throws FileSystemError 62 at the end of the stream, also if its last line opens a quoted value.
/// @throws BoundsError if a limit is exceeded.
/// \ingroup inside
void ReadConfigLine(LineReader& lines, ConfigLine& line);

/// The value of the first line with that key; `std::nullopt` if there is no such line. Keeps at most
/// `kMaxSearchedLine` characters of other lines in memory.
/// @throws FileSystemError as `ReadConfigLine`.
/// @throws BoundsError if a limit is exceeded, or the line with the key is longer than that.
/// \ingroup inside
[[nodiscard]] std::optional<std::u16string> FirstConfigValue(std::u16string_view key, TextStream& stream,
                                                             LoadBudget& budget);

} // namespace ZLMIM
