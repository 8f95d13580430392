#ifndef ZLMIM_CONFIG_MEMORY_USE_H
#define ZLMIM_CONFIG_MEMORY_USE_H

#include <cstdint>

namespace ZLMIM
{

class Anim;
class Mesh;

/// Bytes of memory that what a mesh holds takes, about, as a load has left it: a host may have written what
/// can't be counted.
/// \ingroup inside
[[nodiscard]] std::int64_t MemoryUse(const Mesh& mesh);
/// The same for an animation.
/// \ingroup inside
[[nodiscard]] std::int64_t MemoryUse(const Anim& anim);

} // namespace ZLMIM

#endif
