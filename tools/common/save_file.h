#ifndef ZLMIM_TOOLS_COMMON_SAVE_FILE_H
#define ZLMIM_TOOLS_COMMON_SAVE_FILE_H

#include <filesystem>
#include <functional>
#include <ostream>
#include <string_view>

namespace ZLMIM::Tools
{

/// Writes a file, and creates the folder that it is in. The stream throws at the first byte that can't be
/// written. A file that isn't finished is removed, also if `write` throws something else.
/// @throws std::system_error if it can't be written, with the file's name and the system's reason.
void SaveFile(const std::filesystem::path& path, const std::function<void(std::ostream&)>& write);
void SaveFile(const std::filesystem::path& path, std::string_view bytes);

} // namespace ZLMIM::Tools

#endif
