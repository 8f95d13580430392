#pragma once

#include "tree.h"

#include "tools/common/text.h"
#include "zlmim/model/records.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Inspect
{

using Tools::Counted;
using Tools::Decimal;
using Tools::Number;
using Tools::Printable;
using Tools::Words;

/// A name, printable, shortened if it is long; "(no name)" if it is empty.
[[nodiscard]] std::string NameText(std::u16string_view name);

[[nodiscard]] Cell DecimalCell(float value);

/// A number of things for a right-aligned column, padded so that digits align: "1 bone " above "12 bones".
[[nodiscard]] Cell CountCell(std::int64_t count, std::string_view one, std::string_view many);

/// A word, then the three coordinates.
void AddVectorCells(Node& node, std::string_view word, const Vector& vector);

/// Where lists are cut.
inline constexpr std::int32_t kMaxListed = 8;

/// How many entries of a list are shown. A single further one is shown too, instead of "1 more".
[[nodiscard]] constexpr std::int32_t ListedCount(std::int32_t count)
{
    return count <= kMaxListed + 1 ? count : kMaxListed;
}

/// "… 120 more", if there are any.
void AddMore(Node& node, std::int64_t hiddenCount, std::string_view what = "more");

/// Adds `toNode(entry, number)` for a list's first entries, and how many more there are.
template <class List, class ToNode>
void AddList(Node& node, const List& list, ToNode toNode)
{
    const std::int32_t listed = ListedCount(list.Count());
    for (std::int32_t number = 1; number <= listed; ++number)
    {
        if (const auto entry = list.Item(number))
            node.Children.push_back(toNode(*entry, number));
    }
    AddMore(node, list.Count() - listed);
}

} // namespace ZLMIM::Inspect
