#ifndef ZLMIM_ANIM_ANIM_H
#define ZLMIM_ANIM_ANIM_H

#include "zlmim/anim/bone_anim.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/file_cursor.h"
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
class LoadBudget;

/// The object representing one animation file (`.kin`): a tree of bones with one key frame for each bone and
/// frame. Nothing is computed from it: no interpolation, no matrix, no link to the bones of a `Mesh`.
/// \ingroup animations
class Anim
{
public:
    Anim() = default;
    Anim(const Anim&) = delete;
    Anim& operator=(const Anim&) = delete;
    ~Anim() = default;

    /// Text if `Load` fails, for those failures that have one:
    ///
    /// - "Not a ZL file - no JIRF", "Not a ZLM ANIM file - no ANIM": its first bytes aren't an animation's.
    ///
    /// No load clears it: after an answer of false for another reason, an older text still stands.
    std::u16string ErrorMessage;
    /// Number of FRAM blocks that a load reads, and the highest slot of every bone's frame table, from the
    /// info block. Slots are numbered from 0, so there is always one slot more than blocks.
    std::int32_t FrameCount = 0;
    /// Frames per second, from the info block.
    std::int32_t FPS = 0;
    /// Version in the info block, as stored.
    std::int32_t Version = 0;
    /// From the info block, as stored; without a meaning here. 1 before a load gets so far.
    float MetScale = 1;
    /// The text held in the info block; the file's own name is `FileName`.
    std::u16string Name;
    /// Length of the file in bytes. Stays where the file isn't found, may not be read, or is too long.
    std::int32_t FileSize = 0;
    /// Root of the bone tree. Each load that finds a SKEL block makes a new tree. Where a later file has no
    /// such block, the former tree stays, and takes that file's frames in new frame tables. None if no file
    /// had one.
    std::shared_ptr<BoneAnim> RootBone;
    /// The name given to the last load, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder, whose letter case
    /// doesn't matter where the exact name isn't found. True when the whole file was read. False for a file
    /// that is missing, unreadable, or longer than `kMaxFileSize` or the memory there is, that has no EVNT
    /// block, no skeleton where no earlier one stands, or fewer FRAM blocks than it says, and, with an
    /// `ErrorMessage`, for one that isn't an animation.
    ///
    /// The steps: `FileName`; `FileSize`; `Version`, `Name`, `FrameCount`, `FPS` and `MetScale`; `RootBone`;
    /// the frame tables of all bones, all zero; the frames, one after another. A frame goes to the slot that
    /// bears its number, the later of two wins, and a slot without a frame stays zero. After any failure the
    /// properties stay as far as they were filled, and the file's bytes may stay in memory until the next
    /// load or the end of the object.
    /// @throws BoundsError where the file ends too early (an empty one does), where a frame's number isn't in
    /// 0 to `FrameCount`, where `FrameCount` is negative, or where a limit is exceeded (see \ref limits).
    /// @throws OverflowError where a size leads out of the 32-bit range.
    /// @throws std::bad_alloc where there is no memory for what the file holds.
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files. `paths` remembers the folders that it has listed, and `budget` what
    /// all loads with it have cost together. Both are needed during the call alone.
    [[nodiscard]] bool Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget);

    /// The same for the bytes of a file, which are copied. `name` goes to `FileName` and is not opened.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    bool Parse();
    bool ReadHeader();
    void ReadInfo();
    bool ReadEvents();
    void ReadSkeleton();
    std::shared_ptr<BoneAnim> MakeBone(BoneLimits& limits, std::int32_t level);
    void ReadBone(BoneLimits& limits, BoneAnim& bone, std::int32_t level);

    /// The bones of the tree in the order of a FRAM block's records: each before its children.
    using BoneOrder = std::vector<BoneAnim*>;
    /// FRAM blocks that have been read, and whose records wait to be stored.
    class WaitingFrames;
    BoneOrder InitBoneFrames();
    bool ReadFrames(const BoneOrder& bones);
    bool ReadFrame(WaitingFrames& waiting);

    FileCursor mCursor;
};

} // namespace ZLMIM

#endif
