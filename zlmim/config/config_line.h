#ifndef ZLMIM_CONFIG_CONFIG_LINE_H
#define ZLMIM_CONFIG_CONFIG_LINE_H

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
    /// As the file has it, without the quotation marks around it; may be empty.
    std::u16string Value;
    /// The line of the file where it begins, from 1; 0 for no line.
    std::int64_t FirstLine = 0;
    /// The line where it ends.
    std::int64_t LastLine = 0;

    /// A line that is only "{": it may open a block whose name is on a line of its own.
    [[nodiscard]] bool IsLoneBrace() const { return Key == u"{" && Value.empty(); }
};

/// The only tokeniser of config files: reads the next logical line.
///
/// A logical line is one line of the file: a key, which is lower-cased here, and the value after any run of
/// blanks and tabs. A value that begins with a quotation mark goes on, over further lines, until one ends in
/// a quotation mark; the lines are joined with CR LF, and the two marks are dropped. Where the file ends
/// first, or with that very line, the value keeps its marks. There are no comments, and braces are ordinary
/// keys and values.
/// @throws FileSystemError 62 at the end of the stream, also where its last line opens a quoted value.
/// @throws BoundsError where a limit is exceeded.
/// \ingroup inside
void ReadConfigLine(LineReader& lines, ConfigLine& line);

/// The value of the first line with that key; `std::nullopt` without such a line. Other lines are not held in
/// memory beyond `kMaxSearchedLine` characters.
/// @throws FileSystemError as `ReadConfigLine`.
/// @throws BoundsError where a limit is exceeded, or the line with the key is longer than that.
/// \ingroup inside
[[nodiscard]] std::optional<std::u16string> FirstConfigValue(std::u16string_view key, TextStream& stream,
                                                             LoadBudget& budget);

/// `text` without the blanks (U+0020) at both ends, a part of it.
/// \ingroup inside
[[nodiscard]] std::u16string_view Trim(std::u16string_view text);

} // namespace ZLMIM

#endif
