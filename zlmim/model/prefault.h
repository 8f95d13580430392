#pragma once

#include <cstddef>
#include <cstdint>

namespace ZLMIM
{

/// Prefaults the pages of fresh memory, where the system can, and requests huge pages for a large array.
/// Page faults are most of the cost of a load otherwise. Use it for memory that will be written completely.
/// \ingroup inside
void PrefaultPages(void* memory, std::size_t size) noexcept;

/// Prefaults memory for small objects that need `size` bytes in total: the parts of the heap that the next
/// allocations will probably reach, unless an earlier call did that. To be called again as they are made.
/// Has no effect if there is no memory for them.
/// \ingroup inside
void PrefaultHeap(std::size_t size) noexcept;

} // namespace ZLMIM
