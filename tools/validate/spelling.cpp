#include "spelling.h"

#include "tools/common/text.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ZLMIM::Validate
{

std::string Quoted(std::u16string_view name) { return "\"" + Tools::Printable(name) + "\""; }

int EditDistance(std::u16string_view a, std::u16string_view b)
{
    constexpr int kTooMany = 3;
    constexpr std::size_t kLongest = 64; // so that hostile names cost little
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > 2 || a.size() > kLongest)
        return kTooMany;
    // Rows of the table of distances between the beginnings of both names.
    std::vector<int> before;
    std::vector<int> last(b.size() + 1);
    std::vector<int> row(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i)
    {
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j)
        {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            const bool isSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isSwapped)
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = std::exchange(last, row);
    }
    return std::min(last.back(), kTooMany);
}

std::string DidYouMean(std::u16string_view name, const std::vector<std::u16string>& candidates)
{
    const std::u16string lowerName = LowerCase(name);
    const std::u16string* best = nullptr;
    int bestDistance = name.size() < 3 ? 1 : name.size() < 5 ? 2 : 3;
    for (const std::u16string& candidate : candidates)
    {
        const int distance = EditDistance(lowerName, LowerCase(candidate));
        if (distance < bestDistance && !candidate.empty())
        {
            best = &candidate;
            bestDistance = distance;
        }
    }
    return best ? "; did you mean " + Quoted(*best) + "?" : std::string();
}

} // namespace ZLMIM::Validate
