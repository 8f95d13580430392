#pragma once

#include <cstddef>
#include <cstdint>

namespace ZLMIM
{

/// \addtogroup limits
/// @{

/// The maximum cost of one outermost load: a `ZLMModel::Load` with all that it loads, or a `Mesh::Load` or
/// `Anim::Load` by itself. Exceeding a limit throws `BoundsError`, which names the limit and the file.
/// Everything that was loaded before stays.
///
/// `Memory` counts the objects that the load creates. `Work` counts each byte of a file each time it is read,
/// and the steps in `LoadCost`. Both start at 0 in each outermost load.
struct LoadLimits
{
    /// Bytes of objects. The default is more than any asset needs. For example, 60 meshes of 2 MB take 0.2
    /// GiB.
    std::int64_t Memory = std::int64_t{4} << 30U;
    /// Units of work, about a nanosecond each. The default allows reading 128 GiB, or searching 128 million
    /// folders.
    std::int64_t Work = std::int64_t{128} << 30U;
};

/// For a host that loads files from untrusted sources: 256 MiB, and a few seconds.
inline constexpr LoadLimits kUntrustedLimits = {std::int64_t{256} << 20U, std::int64_t{1} << 30U};

/// Costs of the steps of a load, in units of `LoadLimits::Work`, in addition to the bytes that they read.
struct LoadCost
{
    /// One lookup of a file by name. Without an exact match, it lists the folders of the path.
    static constexpr std::int64_t FileQuestion = 4'096;
    /// One folder visited in the search for a reference: opens a file there.
    static constexpr std::int64_t FolderVisit = 1'024;
    /// One comparison of two names of entries or attachment points, or of two kuids.
    static constexpr std::int64_t NameComparison = 4;
};

/// Memory charged to `LoadLimits::Memory` for each object in addition to its own size: its reference counts,
/// its place in a list, and the allocator's overhead.
inline constexpr std::int64_t kObjectOverhead = 48;

/// Memory charged to `LoadLimits::Memory` for a folder while it is listed, and while its kuid is cached.
inline constexpr std::int64_t kFolderMemory = 512;

/// The longest mesh or animation file that can be read, in bytes: read positions are 32-bit signed numbers.
/// `Load` returns false for a longer file, as for an unreadable one.
inline constexpr std::int64_t kMaxFileSize = 2'147'483'646;

/// Total bytes that all reads of one mesh or animation may read. A size field may point backwards, so blocks
/// may overlap and be read again. Twice the file's size is more than any writer needs.
[[nodiscard]] constexpr std::int64_t ReadAllowance(std::int64_t fileSize) { return 2 * fileSize + 65'536; }

/// Total bytes of the frame tables of one animation. A few bytes of a file can request tables of any size. An
/// animation that fills its tables needs no more than its own size.
[[nodiscard]] constexpr std::int64_t FrameTableAllowance(std::int64_t fileSize)
{
    return (std::int64_t{64} << 20U) + 16 * fileSize;
}

/// Bones of one skeleton, including the root. A count of children takes no bytes per child, so the file's
/// size doesn't limit it.
inline constexpr std::int32_t kMaxBones = 65'536;

/// Levels of one skeleton; the root is level 1. Readers recurse, and use 256 KiB of stack at this depth.
inline constexpr std::int32_t kMaxBoneDepth = 1'024;

/// Models nested in one another by references, including the outermost. Each recurses, with its file open. A
/// deeper reference isn't found.
inline constexpr std::size_t kMaxModelDepth = 32;

/// Models created by one outermost load, including its own: references can multiply from level to level.
/// References past this limit aren't found.
inline constexpr std::int32_t kMaxModels = 4'096;

/// Characters of a line that a search for a reference keeps, more than a key and a kuid need: a neighbour's
/// file may be one endless line. A longer `kuid` line throws `BoundsError`.
inline constexpr std::size_t kMaxSearchedLine = 4'096;

/// Bytes of folder listings that are cached to look up further file names. Past this limit the cache is
/// cleared, and folders are listed again when they are needed.
inline constexpr std::size_t kMaxRememberedListings = std::size_t{64} << 20U;

/// @}

} // namespace ZLMIM
