#ifndef ZLMIM_TOOLS_COMMON_OUTPUT_NAMES_H
#define ZLMIM_TOOLS_COMMON_OUTPUT_NAMES_H

#include <filesystem>
#include <set>
#include <string>

namespace ZLMIM::Tools
{

/// The name of an asset's folder, or of a mesh without its ending. `path` is from the command line.
[[nodiscard]] std::filesystem::path StemOf(const std::string& path);

/// Names of files to write. No two are equal, also where letter case doesn't count.
class OutputNames
{
public:
    explicit OutputNames(std::string ending) : mEnding(std::move(ending)) {}

    /// `stem` with the ending, and with a number before it if that name was returned before.
    [[nodiscard]] std::filesystem::path Add(const std::filesystem::path& stem);

private:
    std::string mEnding;
    std::set<std::u16string> mTaken;
};

} // namespace ZLMIM::Tools

#endif
