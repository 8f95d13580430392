#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{

/// A name from a file, printable and in quotation marks.
[[nodiscard]] std::string Quoted(std::u16string_view name);

/// The edit distance of two names: how many letters are missing, added, changed or swapped with the next one.
/// 3 means all distances above 2.
[[nodiscard]] int EditDistance(std::u16string_view a, std::u16string_view b);

/// `; did you mean "a.load"?` with the candidate that resembles `name` most, or "" if no candidate does.
/// Letter case is ignored.
[[nodiscard]] std::string DidYouMean(std::u16string_view name, const std::vector<std::u16string>& candidates);

} // namespace ZLMIM::Validate
