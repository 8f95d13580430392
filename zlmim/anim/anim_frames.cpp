#include "zlmim/anim/anim.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/pages.h"
#include "zlmim/reader/allowances.h"
#include "zlmim/reader/block.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace ZLMIM
{
namespace
{

/// Makes the frame tables of a tree, each bone's before its children's, and notes the bones in that order.
class FrameTableMaker
{
public:
    FrameTableMaker(std::int32_t highestSlot, std::int64_t allowance)
        : mHighestSlot(highestSlot), mAllowance(allowance)
    {
    }

    void Make(BoneAnim& bone, std::int32_t level)
    {
        mLimits.Count(level);
        const std::int64_t size =
            (std::int64_t{mHighestSlot} + 1) * static_cast<std::int64_t>(sizeof(Keyframe));
        if (size > mAllowance)
            throw BoundsError("frame tables of " + std::to_string(size) + " bytes a bone", mHighestSlot);
        bone.InitFrames(mHighestSlot);
        mAllowance -= size;
        bones.push_back(&bone);
        const auto children = bone.Children();
        if (!children)
            return;
        for (const auto& child : *children)
        {
            if (child)
                Make(*child, level + 1);
        }
    }

    std::vector<BoneAnim*> bones;

private:
    std::int32_t mHighestSlot;
    std::int64_t mAllowance;
    BoneLimits mLimits;
};

} // namespace

Anim::BoneOrder Anim::InitBoneFrames()
{
    FrameTableMaker maker(FrameCount, FrameTableAllowance(mCursor.FileSize()));
    maker.Make(*RootBone, 1);
    return std::move(maker.bones);
}

/// Stored bone by bone, so that a page of a table is written whole while the processor still has it at hand.
/// What waits is stored at the latest when the reading ends, in whatever way.
class Anim::WaitingFrames
{
public:
    explicit WaitingFrames(const BoneOrder& bones) : mBones(bones) {}
    WaitingFrames(const WaitingFrames&) = delete;
    WaitingFrames& operator=(const WaitingFrames&) = delete;
    ~WaitingFrames() { Store(); }

    /// Takes the frame of that number from the cursor, or raises as reading it record by record would.
    void Take(std::int32_t frame, std::int32_t highestFrame, FileCursor& cursor)
    {
        const bool isWhole = frame >= 0 && frame <= highestFrame &&
                             cursor.CanRead(static_cast<std::int64_t>(mBones.size()), sizeof(Keyframe));
        if (!isWhole)
        {
            Store();
            TakeByRecords(frame, cursor);
            return;
        }
        if (mCount == mFrames.size())
            Store();
        const auto run = cursor.GetRun<Keyframe>(static_cast<std::int32_t>(mBones.size()));
        mFrames[mCount++] = {static_cast<std::size_t>(frame), run.bytes};
    }

private:
    struct Frame
    {
        std::size_t number;
        const unsigned char* records;
    };

    void Store() noexcept
    {
        const auto [lowest, highest] = Range();
        const bool isDense = highest - lowest < 2 * mCount;
        std::size_t offset = 0;
        for (BoneAnim* const bone : mBones)
        {
            Keyframe* const table = bone->mFrames.data();
            if (isDense)
                LayOutPages(table + lowest, (highest - lowest) * sizeof(Keyframe));
            for (std::size_t i = 0; i < mCount; ++i)
                std::memcpy(&table[mFrames[i].number], mFrames[i].records + offset, sizeof(Keyframe));
            offset += sizeof(Keyframe);
        }
        mCount = 0;
    }

    /// The lowest and the highest slot that waits; both 0 if none does.
    [[nodiscard]] std::pair<std::size_t, std::size_t> Range() const noexcept
    {
        std::pair<std::size_t, std::size_t> range;
        for (std::size_t i = 0; i < mCount; ++i)
        {
            range.first = i == 0 ? mFrames[i].number : std::min(range.first, mFrames[i].number);
            range.second = std::max(range.second, mFrames[i].number);
        }
        return range;
    }

    /// A frame that will fail has its first records stored all the same.
    void TakeByRecords(std::int32_t frame, FileCursor& cursor)
    {
        for (BoneAnim* const bone : mBones)
        {
            Keyframe keyframe;
            keyframe.p = cursor.GetVector();
            keyframe.q = cursor.GetQuaternion();
            bone->SetFrame(frame, keyframe);
        }
    }

    const BoneOrder& mBones;
    std::array<Frame, 2048> mFrames;
    std::size_t mCount = 0;
};

bool Anim::ReadFrames(const BoneOrder& bones)
{
    const std::int32_t count = FrameCount;
    WaitingFrames waiting(bones);
    for (std::int32_t i = 0; i < count; ++i)
    {
        if (!ReadFrame(waiting))
            return false;
    }
    return true;
}

bool Anim::ReadFrame(WaitingFrames& waiting)
{
    const auto block = Block::EnterBeforeEnd(mCursor, "FRAM");
    if (!block)
        return false;

    static_cast<void>(mCursor.GetLong()); // a field without use
    const std::int32_t frame = mCursor.GetLong();
    waiting.Take(frame, FrameCount, mCursor);

    block->Leave(mCursor);
    return true;
}

} // namespace ZLMIM
