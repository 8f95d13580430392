#ifndef ZLMIM_TESTS_FAILING_ALLOCATIONS_H
#define ZLMIM_TESTS_FAILING_ALLOCATIONS_H

#include <cstdint>

namespace ZLMIM::Testing
{

/// While it lives, the `number`-th allocation (from 1) that this thread makes by `new`, `malloc`, `calloc` or
/// `realloc` fails. For programs that are linked with the --wrap options that failing_allocations.cpp needs.
class FailingAllocation
{
public:
    /// `hasFailed` tells in the end whether there were so many.
    FailingAllocation(std::int64_t number, bool& hasFailed);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

private:
    bool& mHasFailed;
};

/// How many allocations this thread has made, all in all, less those that it has freed.
[[nodiscard]] std::int64_t OutstandingAllocations();

} // namespace ZLMIM::Testing

#endif
