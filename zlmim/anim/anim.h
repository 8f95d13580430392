#ifndef ZLMIM_ANIM_ANIM_H
#define ZLMIM_ANIM_ANIM_H

#include "zlmim/anim/bone_anim.h"
#include "zlmim/model/facade.h"
#include "zlmim/reader/bone_tree.h"
#include "zlmim/reader/file_cursor.h"
#include "zlmim/reader/file_names.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM
{

/// The object representing one animation file (`.kin`): a tree of bones with one key frame for each bone and
/// frame. A host may write every property; `Load` writes them from the file.
class Anim
{
public:
    Anim() = default;
    Anim(const Anim&) = delete;
    Anim& operator=(const Anim&) = delete;
    ~Anim() = default;

    /// Text if `Load` fails, for those failures that have one. Never cleared, so it means something only
    /// after an answer of false.
    std::u16string ErrorMessage;
    /// Number of FRAM blocks, and the highest slot of every bone's frame table.
    std::int32_t FrameCount = 0;
    /// Frames per second.
    std::int32_t FPS = 0;
    /// Version in the info block.
    std::int32_t Version = 0;
    /// As stored; without a meaning here.
    float MetScale = 1;
    /// The text held in the info block.
    std::u16string Name;
    /// Length of the file in bytes.
    std::int32_t FileSize = 0;
    /// Root of the bone tree; none if no file had one. Stays if a later file has none, and then takes that
    /// file's frames.
    std::shared_ptr<BoneAnim> RootBone;
    /// The name given to the last `Load`, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder, whose letter case
    /// doesn't matter where the exact name isn't found. True when the whole file was read. False for a file
    /// that is missing or unreadable, that has no EVNT block, no skeleton, or fewer FRAM blocks than it says,
    /// and, with an `ErrorMessage`, for one that isn't an animation.
    ///
    /// After any failure the properties stay as far as they were filled.
    /// @throws BoundsError where the file ends too early (an empty one does), where a frame's number isn't in
    /// 0 to `FrameCount`, or where a file asks for more than one of its size may.
    /// @throws OverflowError where a size leads out of the 32-bit range.
    /// @throws std::bad_alloc
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files: `names` remembers the folders that it has listed.
    [[nodiscard]] bool Load(std::u16string_view name, FileNames& names);

    /// The same for the bytes of a file, which are copied; `name` only goes to `FileName`.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// What a host of the component holds.
    ZLMIM::Facade Facade;

private:
    bool Finish(bool isLoaded);
    bool ReadHeader();
    void ReadInfo();
    bool ReadEvents();
    void ReadSkeleton();
    void ReadBone(BoneTree<BoneAnim>& tree, const std::shared_ptr<BoneAnim>& bone, std::int32_t level);

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
