#pragma once

#include "finding.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace ZLMIM::Validate
{

struct Request
{
    /// As on the command line, see `FindSubjects`.
    std::vector<std::string> Paths;
    bool IsRecursive = false;
    /// Threads to work on; 0 for as many as the machine has.
    unsigned Threads = 0;
    /// Codes that aren't reported.
    std::set<Code> Ignored = {};
    /// If not empty, the only codes that are reported.
    std::set<Code> Only = {};
    /// Called with the number of checked files, and of all files that the paths lead to. One call at a time,
    /// but from any thread. May be empty.
    std::function<void(std::size_t done, std::size_t all)> OnProgress = {};
};

struct Result
{
    /// Sorted by file, then by line; the same for any number of threads.
    std::vector<Finding> Findings;
    /// Files that have been checked: those that the paths lead to, and those that they need.
    std::size_t Files = 0;
    /// The configs among them, as they are shown, sorted.
    std::vector<std::u16string> Configs;
};

/// Loads and checks the files that paths lead to: configs with their meshes and animations, and the assets
/// that they refer to; each file once. Never throws because of what a file holds.
/// @throws std::bad_alloc, std::filesystem::filesystem_error
[[nodiscard]] Result Validate(const Request& request);

} // namespace ZLMIM::Validate
