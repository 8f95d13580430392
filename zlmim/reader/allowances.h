#ifndef ZLMIM_READER_ALLOWANCES_H
#define ZLMIM_READER_ALLOWANCES_H

#include <cstdint>

namespace ZLMIM
{

/// \addtogroup limits
/// @{

/// The longest mesh or animation that is read, in bytes: these and one more are numbered by 32-bit signed
/// positions. A longer one isn't loaded, as if it couldn't be read.
inline constexpr std::int64_t kMaxFileSize = 2'147'483'646;

/// Bytes of a file of `fileSize` bytes that all reads of one load may take together. Blocks may overlap,
/// since a size field may point backwards, but not forever.
[[nodiscard]] constexpr std::int64_t ReadAllowance(std::int64_t fileSize) { return 2 * fileSize + 65'536; }

/// Bones of one skeleton, the root counted.
inline constexpr std::int32_t kMaxBones = 65'536;

/// Levels of one skeleton, the root being level 1.
inline constexpr std::int32_t kMaxBoneDepth = 1'024;

/// Bytes that the frame tables of one animation from a file of `fileSize` bytes may take together.
[[nodiscard]] constexpr std::int64_t FrameTableAllowance(std::int64_t fileSize)
{
    return std::int64_t{64} * 1'048'576 + 16 * fileSize;
}

/// @}

} // namespace ZLMIM

#endif
