#include "tree.h"

#include "tree_text.h"

#include <algorithm>
#include <map>

namespace ZLMIM::Inspect
{
namespace
{

constexpr std::size_t kIndent = 3; // columns of one level of guides

/// Widths of the columns of each kind, the label's with its guides first.
using Widths = std::map<std::string_view, std::vector<std::size_t>>;

void Measure(const Node& node, std::size_t level, Widths& widths)
{
    auto& columns = widths[node.Kind];
    columns.resize(std::max(columns.size(), node.Cells.size() + 1));
    columns[0] = std::max(columns[0], level * kIndent + Width(node.Label));
    for (std::size_t i = 0; i < node.Cells.size(); ++i)
        columns[i + 1] = std::max(columns[i + 1], Width(node.Cells[i].Text));
    for (const Node& child : node.Children)
        Measure(child, level + 1, widths);
}

std::string Line(const Node& node, std::string guides, const std::vector<std::size_t>& columns)
{
    std::string line = std::move(guides);
    line += node.Label;
    const bool isAligned = !node.Kind.empty();
    std::size_t gap = isAligned ? columns[0] - Width(line) : 0;
    for (std::size_t i = 0; i < node.Cells.size(); ++i)
    {
        const Cell& cell = node.Cells[i];
        const std::size_t padding = isAligned ? columns[i + 1] - Width(cell.Text) : 0;
        const bool isRight = cell.Alignment == Cell::Align::Right;
        line.append(gap + 2 + (isRight ? padding : 0), ' ').append(cell.Text);
        gap = isRight ? 0 : padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

void DrawTo(const Node& node, const std::string& ownGuides, const std::string& guides, const Widths& widths,
            std::string& text)
{
    text.append(Line(node, ownGuides, widths.at(node.Kind))).append(1, '\n');
    for (const Node& child : node.Children)
    {
        const bool isLast = &child == &node.Children.back();
        DrawTo(child, guides + (isLast ? "└─ " : "├─ "), guides + (isLast ? "   " : "│  "), widths, text);
    }
}

std::string Title(const Mesh& mesh) { return Printable(mesh.FileName) + ": mesh"; }

std::string Title(const ZLMModel&) { return "Asset"; }

std::string Title(const Anim& anim) { return Printable(anim.FileName) + ": animation"; }

template <class Object>
std::string OutcomeText(const Object& object, const Examples::Outcome& outcome)
{
    if (outcome.IsLoaded)
        return "loaded";
    if (!outcome.Raised.empty())
        return Words({"raised", outcome.Raised + ":", outcome.What});
    if constexpr (requires { object.ErrorMessage; })
        return Words(
            {"failed:", object.ErrorMessage.empty() ? "no message" : Printable(object.ErrorMessage)});
    else
        return "failed";
}

} // namespace

std::string Draw(const Node& root)
{
    Widths widths;
    Measure(root, 0, widths);
    std::string text;
    DrawTo(root, "", "", widths, text);
    return text;
}

std::string TreeText(const Examples::Asset& asset)
{
    return std::visit(
        [&asset](const auto& object)
        {
            return Words({Title(*object) + ",", OutcomeText(*object, asset.Outcome)}) + "\n\n" +
                   Draw(ToTree(*object));
        },
        asset.Object);
}

} // namespace ZLMIM::Inspect
