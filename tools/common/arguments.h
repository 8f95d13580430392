#pragma once

#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// The program's arguments, its name first: UTF-8 on Windows, elsewhere the bytes as given.
[[nodiscard]] std::vector<std::string> Arguments(int argc, const char* const* argv);

/// The name, with backslashes, that `Load` takes for a path from the command line.
[[nodiscard]] std::u16string FileName(const std::string& path);

} // namespace ZLMIM::Tools
