#ifndef ZLMIM_READER_LOAD_LIMITS_H
#define ZLMIM_READER_LOAD_LIMITS_H

#include <cstddef>
#include <cstdint>

namespace ZLMIM
{

/// \addtogroup limits
/// @{

/// What one outermost load may cost: a `ZLMModel::Load` with all that it loads, or a `Mesh::Load` or
/// `Anim::Load` by itself. Exceeding a limit throws `BoundsError`, which names the limit and the file; what
/// was loaded before stays.
///
/// `Memory` counts the objects that the load makes, and `Work` each byte of a file each time it is read, with
/// the steps of `LoadCost`. Both count from 0 in each outermost load.
struct LoadLimits
{
    /// Bytes of objects. The default is more than any asset needs: 60 meshes of 2 MB, say, take 0.2 GiB.
    std::int64_t Memory = std::int64_t{4} << 30U;
    /// Units of work, about a nanosecond each. The default reads 128 GiB, or searches 128 million folders.
    std::int64_t Work = std::int64_t{128} << 30U;
};

/// For a host that loads files from people it doesn't trust: 256 MiB, and some seconds.
inline constexpr LoadLimits kUntrustedLimits = {std::int64_t{256} << 20U, std::int64_t{1} << 30U};

/// What the steps of a load cost beside the bytes that they read, in units of `LoadLimits::Work`.
struct LoadCost
{
    /// One question whether a file exists: where no name matches exactly, its folders are listed.
    static constexpr std::int64_t FileQuestion = 4'096;
    /// One folder that a search for a reference looks into: a file is opened there.
    static constexpr std::int64_t FolderVisit = 1'024;
    /// One comparison of two names, of entries, attachment points or kuids.
    static constexpr std::int64_t NameComparison = 4;
};

/// What an object takes of `LoadLimits::Memory` beside its own size: the counters of its references, its
/// place in a list, and what the allocator adds.
inline constexpr std::int64_t kObjectOverhead = 48;

/// What a folder takes of `LoadLimits::Memory` while it is listed, and as long as its kuid is remembered.
inline constexpr std::int64_t kFolderMemory = 512;

/// The longest mesh or animation that is read, in bytes: read positions are 32-bit signed numbers. `Load`
/// returns false for a longer one, as for a file that can't be read.
inline constexpr std::int64_t kMaxFileSize = 2'147'483'646;

/// Bytes that all reads of one mesh or animation may take together. Blocks may overlap, since a size field
/// may point backwards, but not forever: twice the file is more than any writer needs.
[[nodiscard]] constexpr std::int64_t ReadAllowance(std::int64_t fileSize) { return 2 * fileSize + 65'536; }

/// Bytes that the frame tables of one animation may take together. A few bytes of a file can ask for tables
/// of any size; an animation that fills its tables needs no more than its own size.
[[nodiscard]] constexpr std::int64_t FrameTableAllowance(std::int64_t fileSize)
{
    return (std::int64_t{64} << 20U) + 16 * fileSize;
}

/// Bones of one skeleton, the root counted: a count of children needs no bytes for them.
inline constexpr std::int32_t kMaxBones = 65'536;

/// Levels of one skeleton, the root being level 1: readers recurse, in 256 KiB of stack at this depth.
inline constexpr std::int32_t kMaxBoneDepth = 1'024;

/// Models nested in one another by references, the outermost counted: each recurses, with its file open. A
/// reference that lies deeper isn't found.
inline constexpr std::size_t kMaxModelDepth = 32;

/// Models that one outermost load makes, its own counted: references multiply from level to level. Further
/// references aren't found.
inline constexpr std::int32_t kMaxModels = 4'096;

/// Characters that a search for a reference keeps of a line, more than a key and a kuid need: a neighbour's
/// file may be one endless line. A longer `kuid` line throws `BoundsError`.
inline constexpr std::size_t kMaxSearchedLine = 4'096;

/// Bytes of folder listings that are remembered for further names of files. Past it all are forgotten, and
/// listed again when they are needed.
inline constexpr std::size_t kMaxRememberedListings = std::size_t{64} << 20U;

/// @}

} // namespace ZLMIM

#endif
