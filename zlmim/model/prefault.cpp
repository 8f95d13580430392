#include "zlmim/model/prefault.h"

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <cstdint>
#include <sys/mman.h>
#endif

namespace ZLMIM
{

void PrefaultPages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept
{
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    constexpr std::uintptr_t kPageSize = 4096; // with larger pages the call fails and has no effect
    constexpr std::size_t kWorthACall = 2 * kPageSize;
    if (size < kWorthACall)
        return;
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t firstPage = (start + kPageSize - 1) / kPageSize * kPageSize;
    const std::uintptr_t end = (start + size) / kPageSize * kPageSize;
    static_cast<void>(::madvise(reinterpret_cast<void*>(firstPage), end - firstPage, MADV_POPULATE_WRITE));
#endif
}

void PrefaultHeap(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    PrefaultPages(memory, size);
    std::free(memory);
}

} // namespace ZLMIM
