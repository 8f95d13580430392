#pragma once

#include "validate.h"

#include <ostream>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

struct Counts
{
    std::size_t Errors = 0;
    std::size_t Warnings = 0;
    /// Checked assets with findings. A file belongs to the config in its folder, or in the nearest folder
    /// above.
    std::size_t Assets = 0;
};

[[nodiscard]] Counts Count(const Result& result);

/// The config that a file belongs to, or the file itself if there is none.
[[nodiscard]] std::u16string AssetOf(const std::u16string& file, const std::vector<std::u16string>& configs);

/// "2,200 files in 1,000 assets: 12 errors, 3 warnings in 9 of them"
[[nodiscard]] std::string Summary(const Result& result);

/// One line for each finding, such as
///
///     wagon/config.txt: line 37, entry "crate": error: no attachment point "a.rof" on "default"
///     [att-unknown]
///
/// and the summary. Control characters are escaped.
void WriteText(const Result& result, std::ostream& out, bool isColoured = false);

/// One line for each finding that editors can jump to; line 1 for a file as a whole:
///
///     wagon/config.txt:37: error: entry "crate": no attachment point "a.rof" on "default" [att-unknown]
void WriteLines(const Result& result, std::ostream& out);

/// One JSON object, as `docs/validate.schema.json` describes it.
void WriteJson(const Result& result, std::ostream& out);

} // namespace ZLMIM::Validate
