#include "zlmim/model/prefault.h"

#include <algorithm>
#include <cstdlib>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace ZLMIM
{

#if defined(__linux__) && defined(MADV_POPULATE_WRITE)

namespace
{

constexpr std::uintptr_t kPageSize = 4096; // with larger pages the calls fail and have no effect
constexpr std::uintptr_t kHugePage = 2 * 1'048'576;

/// The heap is prefaulted in aligned regions of this size: the more pages at once, the less each costs. With
/// larger ones, some blocks would have 128 KiB, which glibc doesn't take from the heap.
constexpr std::uintptr_t kRegion = 65'536;

/// A block of the heap that nothing is written to. Null if there is no memory.
class HeapBlock
{
public:
    explicit HeapBlock(std::size_t size) noexcept : mMemory(std::malloc(size)) {}
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;
    ~HeapBlock() { std::free(mMemory); }

    [[nodiscard]] std::uintptr_t Start() const noexcept { return reinterpret_cast<std::uintptr_t>(mMemory); }

private:
    void* mMemory;
};

/// The first region that begins at `address` or after it.
constexpr std::uintptr_t NextRegion(std::uintptr_t address) noexcept
{
    return (address + kRegion - 1) / kRegion * kRegion;
}

} // namespace

void PrefaultPages(void* memory, std::size_t size) noexcept
{
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
}

void PrefaultHeap(std::size_t size) noexcept
{
    const std::uintptr_t start = HeapBlock(size).Start();
    if (start == 0 || NextRegion(start) == NextRegion(start + size))
        return;
    // Allocated only now, since malloc writes to a page at the end of a block.
    const HeapBlock block(size + kRegion);
    if (block.Start() == 0)
        return;
    const std::uintptr_t first = NextRegion(block.Start());
    PrefaultPages(reinterpret_cast<void*>(first), NextRegion(block.Start() + size) - first);
}

#else

void PrefaultPages(void*, std::size_t) noexcept {}
void PrefaultHeap(std::size_t) noexcept {}

#endif

} // namespace ZLMIM
