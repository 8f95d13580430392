#pragma once

#include <cstddef>

namespace ZLMIM
{

/// Prefaults the pages of fresh memory, where the system can. This halves the cost of page faults, which is
/// most of the cost of a large load. Use it for memory that will be written completely.
/// \ingroup inside
void PrefaultPages(void* memory, std::size_t size) noexcept;

/// Prefaults memory of the allocator's that the next small allocations will probably get: allocates `size`
/// bytes, prefaults and frees them. For many small objects of known total size.
/// @throws std::bad_alloc
/// \ingroup inside
void PrefaultHeap(std::size_t size);

} // namespace ZLMIM
