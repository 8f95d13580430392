#include "tree.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"

#include <algorithm>
#include <map>

namespace ZLMIM::Inspect
{
namespace
{

using Tools::Width;

constexpr std::size_t kIndent = 3; // columns of one level of guides
constexpr std::size_t kGap = 2;    // columns between cells

/// Widths of the columns of each kind. The first is the label's, its guides included.
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

class Drawing
{
public:
    Drawing(const Node& root, const TreeForm& form) : mForm(form) { Measure(root, 0, mWidths); }

    /// `ownGuides` come before the node's label, `guides` before what is below it.
    void Draw(const Node& node, const std::string& ownGuides, const std::string& guides)
    {
        DrawLine(node, ownGuides, guides + (node.Children.empty() ? "" : "│"));
        for (const Node& child : node.Children)
        {
            const bool isLast = &child == &node.Children.back();
            Draw(child, guides + (isLast ? "└─ " : "├─ "), guides + (isLast ? "   " : "│  "));
        }
    }

    std::string Take() { return std::move(mText); }

private:
    void DrawLine(const Node& node, const std::string& ownGuides, const std::string& guides)
    {
        const auto& columns = mWidths.at(node.Kind);
        const bool isAligned = !node.Kind.empty();
        const std::string label =
            Tools::Shortened(node.Label, mForm.Width > Width(ownGuides) ? mForm.Width - Width(ownGuides) : 1);
        mText +=
            Paint(ownGuides, Tools::Colour::Faint) + (isAligned ? label : Paint(label, Tools::Colour::Bold));
        std::size_t column = Width(ownGuides) + Width(label); // where the line ends
        std::size_t start = (isAligned ? columns[0] : column) + kGap;
        // Continued lines begin below the first cell, unless that is too far to the right.
        const std::size_t indent = start <= mForm.Width / 2 ? start : Width(guides) + kGap;
        for (std::size_t i = 0; i < node.Cells.size(); ++i)
        {
            const Cell& cell = node.Cells[i];
            const std::size_t width = isAligned ? columns[i + 1] : Width(cell.Text);
            if (width == 0)
                continue;
            const bool isLong = start + std::min(width, kLeastShortened) > mForm.Width;
            if (isLong && start > indent && !cell.Text.empty())
            {
                mText += "\n" + Paint(guides, Tools::Colour::Faint);
                column = Width(guides);
                start = indent;
            }
            const std::size_t room = mForm.Width > start ? mForm.Width - start : 1;
            const std::string text = Tools::Shortened(cell.Text, room);
            const bool isRight = cell.Alignment == Cell::Align::Right;
            const std::size_t at = start + (isRight && width > Width(text) ? width - Width(text) : 0);
            if (!text.empty())
            {
                mText.append(at - column, ' ');
                mText += cell.Colour ? Paint(text, *cell.Colour) : text;
                column = at + Width(text);
            }
            start += width + kGap;
        }
        mText += '\n';
    }

    [[nodiscard]] std::string Paint(const std::string& text, Tools::Colour colour) const
    {
        return Tools::Paint(text, colour, mForm.IsColoured);
    }

    /// A wider cell is shortened instead of starting a new line.
    static constexpr std::size_t kLeastShortened = 40;

    const TreeForm& mForm;
    Widths mWidths;
    std::string mText;
};

const char* KindName(const Tools::Input& input)
{
    if (input.Kind == Tools::Kind::Mesh)
        return "mesh";
    return input.Kind == Tools::Kind::Anim ? "animation" : "asset";
}

} // namespace

std::string Draw(const Node& root, const TreeForm& form)
{
    Drawing drawing(root, form);
    drawing.Draw(root, "", "");
    return drawing.Take();
}

std::string TreeText(const Tools::Input& input, const Tools::Asset& asset,
                     const std::vector<Tools::Problem>& problems, const TreeForm& form, PathResolver& names)
{
    std::string title = Tools::ShownFile(input.Name) + ": " + KindName(input) + ", ";
    std::string failure = std::visit(
        [&](const auto& object) { return Tools::Failure(*object, asset.Outcome, names); }, asset.Object);
    if (!failure.empty())
        failure.insert(0, "not loaded to its end: ");
    else if (!problems.empty())
        failure = "loaded, with " +
                  Tools::Counted(static_cast<std::int64_t>(problems.size()), "problem", "problems");
    if (failure.empty())
        title += "loaded";
    else
        title =
            Tools::Wrapped(title + Tools::Paint(failure, Tools::Colour::Red, form.IsColoured), form.Width, 4);
    const auto tree = [&](const auto& object)
    {
        if constexpr (std::is_same_v<std::decay_t<decltype(*object)>, ZLMModel>)
            return ToTree(*object, problems, form);
        else
            return ToTree(*object);
    };
    return title + "\n\n" + Draw(std::visit(tree, asset.Object), form);
}

} // namespace ZLMIM::Inspect
