#ifndef INSPECT_TREE_H
#define INSPECT_TREE_H

#include "examples/asset.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Inspect
{

/// One column of a line.
struct Cell
{
    enum class Align : bool
    {
        Left,
        Right,
    };

    std::string Text;
    Align Alignment = Align::Left;
};

/// One line of a drawn tree, and what stands below it. Text is printable UTF-8.
struct Node
{
    /// Nodes of one kind have their columns aligned, wherever they stand. Empty: not aligned with others.
    std::string_view Kind;
    std::string Label;
    std::vector<Cell> Cells;
    std::vector<Node> Children;
};

/// The lines of the tree.
[[nodiscard]] std::string Draw(const Node& root);

/// An object of the model as a tree for people: one line an object, long lists shortened.
[[nodiscard]] Node ToTree(const Mesh& mesh);
[[nodiscard]] Node ToTree(const Anim& anim);
[[nodiscard]] Node ToTree(const ZLMModel& model);

/// The file and how its load ended, then the object's tree.
[[nodiscard]] std::string TreeText(const Examples::Asset& asset);

} // namespace ZLMIM::Inspect

#endif
