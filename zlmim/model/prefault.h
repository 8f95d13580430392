#pragma once

#include <cstddef>

namespace ZLMIM
{

/// Prefaults the pages of fresh memory, where the system can. This halves the cost of page faults, which is
/// most of the cost of a large load. Use it for memory that will be written completely.
/// \ingroup inside
void PrefaultPages(void* memory, std::size_t size) noexcept;

} // namespace ZLMIM
