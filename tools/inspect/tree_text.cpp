#include "tree_text.h"

namespace ZLMIM::Inspect
{
std::string NameText(std::u16string_view name)
{
    constexpr std::size_t kMaxName = 48;
    if (name.empty())
        return "(no name)";
    return name.size() <= kMaxName ? Printable(name) : Printable(name.substr(0, kMaxName - 1)) + "…";
}

Cell DecimalCell(float value) { return {Decimal(value), Cell::Align::Right}; }

Cell CountCell(std::int64_t count, std::string_view one, std::string_view many)
{
    std::string text = Counted(count, one, many);
    if (count == 1)
        text.append(many.size() - one.size(), ' ');
    return {text, Cell::Align::Right};
}

void AddVectorCells(Node& node, std::string_view word, const Vector& vector)
{
    node.Cells.push_back({std::string(word)});
    for (const float coordinate : {vector.x, vector.y, vector.z})
        node.Cells.push_back(DecimalCell(coordinate));
}

void AddMore(Node& node, std::int64_t hiddenCount, std::string_view what)
{
    if (hiddenCount > 0)
        node.Children.push_back({{}, Words({"…", Number(hiddenCount), what}), {}, {}});
}

} // namespace ZLMIM::Inspect
