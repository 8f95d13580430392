#ifndef ZLMIM_CONFIG_CONFIG_LINE_H
#define ZLMIM_CONFIG_CONFIG_LINE_H

#include "zlmim/config/file_system.h"

#include <string>
#include <string_view>

namespace ZLMIM
{

/// The only tokeniser of config files: takes the next logical line, one key and one value, from `stream`.
///
/// A logical line is one line of the file: a key, which is lower-cased here, and behind any run of blanks and
/// tabs the value. A value that begins with a quotation mark runs on, over further lines, until one ends in a
/// quotation mark; the lines are joined with CR LF and the two marks dropped. Where the file ends first, or
/// with that very line, the value stays as it is, its marks included. Key and value may be empty; there are
/// no comments, and braces are ordinary keys and values.
/// @throws FileSystemError at the end of the stream, also where its last line opens a quoted value.
/// \ingroup inside
void ReadConfigLine(TextStream& stream, std::u16string& key, std::u16string& value);

/// `text` without the blanks (U+0020) at its ends, a part of it.
/// \ingroup inside
[[nodiscard]] std::u16string_view Trim(std::u16string_view text);

} // namespace ZLMIM

#endif
