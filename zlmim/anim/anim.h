#pragma once

#include "zlmim/anim/bone_anim.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM
{

class BoneLimits;
class FileCursor;

/// The object representing one animation file (`.kin`): a tree of bones with one key frame per bone and
/// frame. The library computes nothing from it: no interpolation, no matrix, no link to the bones of a
/// `Mesh`.
/// \ingroup animations
class Anim
{
public:
    Anim() = default;
    Anim(const Anim&) = delete;
    Anim& operator=(const Anim&) = delete;

    /// Error text, set by a `Load` that fails for one of these reasons:
    ///
    /// - "Not a ZL file - no JIRF", "Not a ZLM ANIM file - no ANIM": the first bytes aren't those of an
    ///   animation file.
    ///
    /// No load clears it: if a later `Load` returns false for another reason, the old text remains.
    std::u16string ErrorMessage;
    /// Number of FRAM blocks that a load reads, and the highest slot of every bone's frame table, from the
    /// info block. Slots are numbered from 0, so there is always one more slot than blocks.
    std::int32_t FrameCount = 0;
    /// Frames per second, from the info block.
    std::int32_t FPS = 0;
    /// Version in the info block, as stored.
    std::int32_t Version = 0;
    /// From the info block, as stored. The library gives it no meaning. 1 before a load reads it.
    float MetScale = 1;
    /// The text in the info block; the file's own name is `FileName`.
    std::u16string Name;
    /// Length of the file in bytes. Unchanged if the file isn't found, can't be read, or is too long.
    std::int32_t FileSize = 0;
    /// Root of the bone tree. Each load that finds a SKEL block creates a new tree. If a later file has no
    /// such block, the old tree stays, and gets that file's frames in new frame tables. Null if no file had
    /// one.
    std::shared_ptr<BoneAnim> RootBone;
    /// The name passed to the last load, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder. Letter case is
    /// ignored if there is no exact match. Returns true if the whole file was read. Returns false if the file
    /// is missing, unreadable, longer than `kMaxFileSize` or too large for the available memory. Also returns
    /// false if the file has no EVNT block, no skeleton while there is no earlier one, or fewer FRAM blocks
    /// than it declares. Returns false, with an `ErrorMessage`, if the file isn't an animation.
    ///
    /// Sets, in this order: `FileName`; `FileSize`; `Version`, `Name`, `FrameCount`, `FPS` and `MetScale`;
    /// `RootBone`; the frame tables of all bones, all zero; the frames, one after another. A frame is stored
    /// in the slot of its number. Of two frames with one number the later wins, and a slot without a frame
    /// stays zero. After a failure, the properties keep the values that were read before.
    /// @throws BoundsError if the file ends too early (also if it is empty), if a frame's number isn't in 0
    /// to `FrameCount`, if `FrameCount` is negative, or if a limit is exceeded (see \ref limits).
    /// @throws OverflowError if a size is outside the 32-bit range.
    /// @throws std::bad_alloc if there isn't enough memory for the file's objects.
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files. `paths` caches the folders that it lists. `budget` is shared by all
    /// loads that use it. Both are used during the call only.
    [[nodiscard]] bool Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget);

    /// The same for the bytes of a file, which are copied. `name` is stored in `FileName` and isn't opened.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    bool Parse(FileCursor& cursor);
    bool ReadHeader(FileCursor& cursor);
    void ReadInfo(FileCursor& cursor);
    bool ReadEvents(FileCursor& cursor);
    void ReadSkeleton(FileCursor& cursor);
    std::shared_ptr<BoneAnim> MakeBone(FileCursor& cursor, BoneLimits& limits, std::int32_t level);
    BoneAnim& AddChild(FileCursor& cursor, BoneLimits& limits, BoneAnim& parent, std::int32_t level);
    void ReadBone(FileCursor& cursor, BoneLimits& limits, BoneAnim& bone, std::int32_t level);

    /// The bones of the tree in the order of a FRAM block's records: each before its children.
    using BoneOrder = std::vector<BoneAnim*>;
    /// Buffers FRAM blocks that have been read but not stored.
    class WaitingFrames;
    BoneOrder InitBoneFrames(FileCursor& cursor);
    bool ReadFrames(FileCursor& cursor, const BoneOrder& bones);
    bool ReadFrame(FileCursor& cursor, WaitingFrames& waiting);
};

} // namespace ZLMIM
