#include "failing_allocations.h"

#include <cstddef>
#include <new>

namespace
{

/// Allocations up to and including the one that fails; 0 if no allocation is to fail.
thread_local std::int64_t countdown = 0;
thread_local std::int64_t outstanding = 0;

bool MustFail() { return countdown > 0 && --countdown == 0; }

void* Counted(void* block)
{
    outstanding += block ? 1 : 0;
    return block;
}

} // namespace

// With --wrap=malloc, the linker turns calls of `malloc` into calls of `__wrap_malloc`, and `__real_malloc`
// is the C library's function.
extern "C"
{
    void* __real_malloc(std::size_t size);
    void* __real_calloc(std::size_t count, std::size_t size);
    void* __real_realloc(void* block, std::size_t size);
    void __real_free(void* block);

    void* __wrap_malloc(std::size_t size) { return MustFail() ? nullptr : Counted(__real_malloc(size)); }
    void* __wrap_calloc(std::size_t count, std::size_t size)
    {
        return MustFail() ? nullptr : Counted(__real_calloc(count, size));
    }
    void* __wrap_realloc(void* block, std::size_t size)
    {
        if (MustFail())
            return nullptr;
        void* const grown = __real_realloc(block, size);
        return block ? grown : Counted(grown);
    }
    void __wrap_free(void* block)
    {
        outstanding -= block ? 1 : 0;
        __real_free(block);
    }
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return __wrap_malloc(size); }
void* operator new(std::size_t size)
{
    if (void* const block = __wrap_malloc(size))
        return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return ::operator new(size); }
void operator delete(void* block) noexcept { __wrap_free(block); }
void operator delete(void* block, std::size_t) noexcept { __wrap_free(block); }
void operator delete[](void* block) noexcept { __wrap_free(block); }
void operator delete[](void* block, std::size_t) noexcept { __wrap_free(block); }

namespace ZLMIM::Testing
{

FailingAllocation::FailingAllocation(std::int64_t number, bool& hasFailed) : mHasFailed(hasFailed)
{
    countdown = number;
}

FailingAllocation::~FailingAllocation()
{
    mHasFailed = countdown == 0;
    countdown = 0;
}

std::int64_t OutstandingAllocations() { return outstanding; }

} // namespace ZLMIM::Testing
