#pragma once

#include <cstdint>

namespace ZLMIM::Testing
{

/// Makes the `number`-th allocation (from 1) of this thread by `new`, `malloc`, `calloc` or `realloc` fail
/// while in scope. Needs the program to be linked with --wrap for these functions.
class FailingAllocation
{
public:
    /// At the end, sets `hasFailed` to whether that allocation was reached.
    FailingAllocation(std::int64_t number, bool& hasFailed);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

private:
    bool& mHasFailed;
};

/// Number of this thread's allocations that it hasn't freed.
[[nodiscard]] std::int64_t OutstandingAllocations();

} // namespace ZLMIM::Testing
