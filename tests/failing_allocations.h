#ifndef ZLMIM_TESTS_FAILING_ALLOCATIONS_H
#define ZLMIM_TESTS_FAILING_ALLOCATIONS_H

#include <cstdint>

namespace ZLMIM::Testing
{

/// Makes the `number`-th allocation (from 1) of this thread by `new`, `malloc`, `calloc` or `realloc` fail
/// while in scope. Needs the program to be linked with --wrap for these functions.
class FailingAllocation
{
public:
    /// `hasFailed` is set at the end: whether that allocation was reached.
    FailingAllocation(std::int64_t number, bool& hasFailed);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

private:
    bool& mHasFailed;
};

/// Allocations of this thread minus those that it has freed.
[[nodiscard]] std::int64_t OutstandingAllocations();

} // namespace ZLMIM::Testing

#endif
