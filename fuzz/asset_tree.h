#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Fuzzing
{

/// A file of a tree that is written as one text. A line with its name comes before each file. The name is
/// relative to the top of the tree and has backslashes. All lines up to the next such line belong to the
/// file:
///
///     @ assets\wagon\config.txt
///     kuid <kuid:1:1>
///     bogey-0 <kuid:1:2>
///     @! assets\locked\config.txt
///
/// A name after "@!" is that of an unreadable file. A name that ends in a backslash is that of a folder.
struct TreeFile
{
    std::string name;
    std::string bytes;
    bool isReadable = true;
};

/// The files of a tree in order. Text before the first name is dropped.
[[nodiscard]] std::vector<TreeFile> ReadTree(std::string_view text);

/// The inverse of `ReadTree`, for files whose bytes end with a line end and contain no line that starts a
/// file.
[[nodiscard]] std::string WriteTree(const std::vector<TreeFile>& files);

} // namespace ZLMIM::Fuzzing
