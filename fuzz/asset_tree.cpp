#include "fuzz/asset_tree.h"

#include <algorithm>
#include <cstddef>

namespace ZLMIM::Fuzzing
{
namespace
{

constexpr std::string_view kFile = "@ ";
constexpr std::string_view kUnreadableFile = "@! ";

} // namespace

std::vector<TreeFile> ReadTree(std::string_view text)
{
    std::vector<TreeFile> files;
    while (!text.empty())
    {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end);
        const bool isReadable = line.starts_with(kFile);
        if (isReadable || line.starts_with(kUnreadableFile))
        {
            const auto name = line.substr((isReadable ? kFile : kUnreadableFile).size());
            files.push_back({std::string(name.substr(0, name.find('\n'))), {}, isReadable});
        }
        else if (!files.empty())
        {
            files.back().bytes += line;
        }
    }
    return files;
}

std::string WriteTree(const std::vector<TreeFile>& files)
{
    std::string text;
    for (const TreeFile& file : files)
    {
        text += file.isReadable ? kFile : kUnreadableFile;
        text += file.name + "\n" + file.bytes;
    }
    return text;
}

} // namespace ZLMIM::Fuzzing
