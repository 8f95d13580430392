#ifndef VALIDATE_VALIDATE_H
#define VALIDATE_VALIDATE_H

#include "finding.h"

#include <cstddef>
#include <functional>
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
    /// Told how many of the files that the paths lead to are done, one call at a time, from any thread. May
    /// be empty.
    std::function<void(std::size_t done, std::size_t all)> OnProgress = {};
};

struct Result
{
    /// Sorted by file; the same for the same files, however many threads there are.
    std::vector<Finding> Findings;
    /// Files that have been judged: those that the paths lead to, and those that they need.
    std::size_t Files = 0;
};

/// Loads and judges the files that paths lead to: configs with their meshes and animations, and with the
/// assets that they refer to, each file once. Nothing that a file holds makes it raise.
/// @throws std::bad_alloc, std::filesystem::filesystem_error
[[nodiscard]] Result Validate(const Request& request);

} // namespace ZLMIM::Validate

#endif
