#ifndef ZLMIM_MODEL_PREFAULT_H
#define ZLMIM_MODEL_PREFAULT_H

#include <cstddef>

namespace ZLMIM
{

/// Has the system lay out the pages of fresh memory at once, where it can: half the cost of having it find
/// them missing one by one, which is most of what a large load costs. For memory that will be written whole.
/// \ingroup inside
void PrefaultPages(void* memory, std::size_t size) noexcept;

} // namespace ZLMIM

#endif
