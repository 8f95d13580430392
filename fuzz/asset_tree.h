#ifndef ZLMIM_FUZZ_ASSET_TREE_H
#define ZLMIM_FUZZ_ASSET_TREE_H

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Fuzzing
{

/// A file of a tree that is written as one text. Each file is announced by a line with its name, which counts
/// from the top of the tree and has backslashes; all lines up to the next such line are the file's:
///
///     @ assets\wagon\config.txt
///     kuid <kuid:1:1>
///     bogey-0 <kuid:1:2>
///     @! assets\locked\config.txt
///
/// A name behind "@!" is that of a file that nobody may read, and one that ends in a backslash that of a
/// folder.
struct TreeFile
{
    std::string name;
    std::string bytes;
    bool isReadable = true;
};

/// The files of a tree in order. What stands before the first name is dropped.
[[nodiscard]] std::vector<TreeFile> ReadTree(std::string_view text);

/// Opposite of `ReadTree`, for files whose bytes end in a line's end and hold no line that announces a file.
[[nodiscard]] std::string WriteTree(const std::vector<TreeFile>& files);

} // namespace ZLMIM::Fuzzing

#endif
