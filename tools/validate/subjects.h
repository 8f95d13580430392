#pragma once

#include "finding.h"

#include "tools/common/asset.h"
#include "zlmim/reader/path_resolver.h"

#include <string>
#include <vector>

namespace ZLMIM::Validate
{

struct Subjects
{
    std::vector<Tools::Input> Files;
    /// About paths that don't exist, and misnamed files.
    std::vector<Finding> Findings;
};

/// The files that paths from a command line lead to, in their order. If folders are walked, all files of the
/// three kinds in them and below, sorted; links to folders aren't followed below the path itself. What
/// doesn't exist or can't be read becomes a finding.
[[nodiscard]] Subjects FindSubjects(const std::vector<std::string>& paths, bool isRecursive,
                                    PathResolver& names);

} // namespace ZLMIM::Validate
