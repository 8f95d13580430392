#pragma once

#include "tools/common/asset.h"
#include "tools/common/problems.h"
#include "tools/common/terminal.h"

#include <cstddef>
#include <optional>
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
    std::optional<Tools::Colour> Colour = {};
};

/// A line of a tree with its children. Text is printable UTF-8.
struct Node
{
    /// Nodes of one kind have their columns aligned throughout the tree. Empty: not aligned.
    std::string_view Kind;
    std::string Label;
    std::vector<Cell> Cells;
    std::vector<Node> Children;
};

struct TreeForm
{
    /// Columns that a line may take.
    std::size_t Width = 80;
    bool IsVerbose = false;
    bool IsColoured = false;
};

/// The lines of the tree. A line that is too long continues below itself.
[[nodiscard]] std::string Draw(const Node& root, const TreeForm& form);

/// An object of the model as a tree for people: one line an object, long lists shortened.
[[nodiscard]] Node ToTree(const Mesh& mesh);
[[nodiscard]] Node ToTree(const Anim& anim);
/// `problems` are shown where they are, as far as they are about entries and assets.
[[nodiscard]] Node ToTree(const ZLMModel& model, const std::vector<Tools::Problem>& problems,
                          const TreeForm& form);

/// The file and how its load ended, then the object's tree.
[[nodiscard]] std::string TreeText(const Tools::Input& input, const Tools::Asset& asset,
                                   const std::vector<Tools::Problem>& problems, const TreeForm& form,
                                   PathResolver& names);

} // namespace ZLMIM::Inspect
