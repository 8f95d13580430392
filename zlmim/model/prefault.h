#pragma once

#include <cstddef>
#include <cstdint>

namespace ZLMIM
{

/// Prefaults the pages of fresh memory, where the system can, and requests huge pages for a large array.
/// Page faults are most of the cost of a load otherwise. Use it for memory that will be written completely.
/// \ingroup inside
void PrefaultPages(void* memory, std::size_t size) noexcept;

/// Prefaults memory of the allocator's that the next small allocations will probably get, for many small
/// objects.
/// \ingroup inside
class HeapPrefaulter
{
public:
    /// Allocates `size` bytes, prefaults and frees them, unless they are at the same place as those of the
    /// last call.
    /// @throws std::bad_alloc
    void Prefault(std::size_t size);

private:
    /// Address of the bytes of the last call.
    std::uintptr_t mLast = 0;
};

} // namespace ZLMIM
