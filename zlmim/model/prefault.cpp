#include "zlmim/model/prefault.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace ZLMIM
{

void PrefaultPages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept
{
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    constexpr std::uintptr_t kPageSize = 4096; // with larger pages the calls fail and have no effect
    constexpr std::uintptr_t kHugePage = 2 * 1'048'576;
    constexpr std::size_t kWorthACall = 2 * kPageSize;
    if (size < kWorthACall)
        return;
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t firstPage = (start + kPageSize - 1) / kPageSize * kPageSize;
    const std::uintptr_t end = (start + size) / kPageSize * kPageSize;
    if (size >= kHugePage)
        static_cast<void>(::madvise(reinterpret_cast<void*>(firstPage), end - firstPage, MADV_HUGEPAGE));
    // In steps: during a call, no other thread of the process can map memory.
    for (std::uintptr_t page = firstPage; page < end; page += kHugePage)
        static_cast<void>(
            ::madvise(reinterpret_cast<void*>(page), std::min(kHugePage, end - page), MADV_POPULATE_WRITE));
#endif
}

void HeapPrefaulter::Prefault(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    if (std::exchange(mLast, address) != address)
        PrefaultPages(memory, size);
    std::free(memory);
}

} // namespace ZLMIM
