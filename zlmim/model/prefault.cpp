#include "zlmim/model/prefault.h"

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
    constexpr std::size_t kWorthACall = 2 * kPageSize;
    constexpr std::size_t kWorthHugePages = 2 * 1'048'576; // may contain one
    if (size < kWorthACall)
        return;
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t firstPage = (start + kPageSize - 1) / kPageSize * kPageSize;
    const std::uintptr_t end = (start + size) / kPageSize * kPageSize;
    const auto advise = [&](int advice)
    { static_cast<void>(::madvise(reinterpret_cast<void*>(firstPage), end - firstPage, advice)); };
    if (size >= kWorthHugePages)
        advise(MADV_HUGEPAGE);
    advise(MADV_POPULATE_WRITE);
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
