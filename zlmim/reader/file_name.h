#ifndef ZLMIM_READER_FILE_NAME_H
#define ZLMIM_READER_FILE_NAME_H

#include <string>
#include <string_view>

namespace ZLMIM
{

/// What a name in the object model's form (UTF-16, backslashes) is called by this system, in the bytes that
/// its calls take. The one place where the two meet.
///
/// The exact name comes first. If nothing bears it, letter case is ignored: part by part, the entries of a
/// folder that equal the part in lower case, in the order of their bytes, until one leads to the end of the
/// name. An entry is compared as UTF-8 and as Windows-1252, since text that was saved as UTF-8 may have been
/// read one character a byte.
///
/// Empty text where nothing stands under the name.
[[nodiscard]] std::string FindSystemName(std::u16string_view name);

/// The text of a name that the system gave: from UTF-8 if it is that, else through Windows-1252.
[[nodiscard]] std::u16string FromSystemName(std::string_view systemName);

} // namespace ZLMIM

#endif
