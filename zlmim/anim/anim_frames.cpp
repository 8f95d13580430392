#include "zlmim/anim/anim.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/bone_limits.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ZLMIM
{

/// Creates the frame tables of all bones, each bone's before its children's, and lists the bones in that
/// order.
Anim::BoneOrder Anim::InitBoneFrames(FileCursor& cursor)
{
    const auto size = (std::int64_t{FrameCount} + 1) * static_cast<std::int64_t>(sizeof(Keyframe));
    std::int64_t allowance = FrameTableAllowance(cursor.FileSize());
    BoneLimits limits;
    BoneOrder bones;
    const auto initBones = [&](const auto& self, BoneAnim& bone, std::int32_t level) -> void
    {
        limits.Count(level);
        if (size > allowance)
            throw BoundsError("the frame tables are too large for the file (FrameTableAllowance)",
                              FrameCount);
        cursor.Budget().ChargeMemory(std::max<std::int64_t>(size, 0));
        bone.InitFrames(FrameCount);
        allowance -= size;
        bones.push_back(&bone);
        const auto children = bone.Children();
        if (!children)
            return;
        for (const auto& child : *children)
        {
            if (child)
                self(self, *child, level + 1);
        }
    };
    initBones(initBones, *RootBone, 1);
    return bones;
}

/// Buffers some frames and stores them bone by bone, which is cache-friendly. The destructor flushes, also on
/// a throw.
class Anim::WaitingFrames
{
public:
    explicit WaitingFrames(const BoneOrder& bones) : mBones(bones) {}
    WaitingFrames(const WaitingFrames&) = delete;
    ~WaitingFrames() { Store(); }

    /// Takes the frame of that number from the cursor. Throws the same errors as reading it record by record.
    void Take(std::int32_t frame, std::int32_t highestFrame, FileCursor& cursor)
    {
        const bool isWhole = frame >= 0 && frame <= highestFrame &&
                             cursor.CanRead(static_cast<std::int64_t>(mBones.size()), sizeof(Keyframe));
        if (!isWhole)
        {
            Store();
            // Stores the records before the failure, even for a frame that fails.
            for (BoneAnim* const bone : mBones)
            {
                Keyframe keyframe;
                keyframe.p = cursor.GetVector();
                keyframe.q = cursor.GetQuaternion();
                bone->SetFrame(frame, keyframe);
            }
            return;
        }
        if (mCount == mFrames.size())
            Store();
        const auto run = cursor.GetArray<Keyframe>(static_cast<std::int32_t>(mBones.size()));
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
        std::size_t offset = 0;
        for (BoneAnim* const bone : mBones)
        {
            Keyframe* const table = bone->mFrames.data();
            for (std::size_t i = 0; i < mCount; ++i)
                std::memcpy(&table[mFrames[i].number], mFrames[i].records + offset, sizeof(Keyframe));
            offset += sizeof(Keyframe);
        }
        mCount = 0;
    }

    const BoneOrder& mBones;
    std::array<Frame, 8> mFrames;
    std::size_t mCount = 0;
};

bool Anim::ReadFrames(FileCursor& cursor, const BoneOrder& bones)
{
    const std::int32_t count = FrameCount;
    // Skipped if a small file declares many frames, whose tables may never be touched.
    if (cursor.CanRead(count, static_cast<std::int64_t>(bones.size() * sizeof(Keyframe))))
    {
        for (BoneAnim* const bone : bones)
            bone->mFrames.Prefault();
    }
    WaitingFrames waiting(bones);
    for (std::int32_t i = 0; i < count; ++i)
    {
        if (!ReadFrame(cursor, waiting))
            return false;
    }
    return true;
}

bool Anim::ReadFrame(FileCursor& cursor, WaitingFrames& waiting)
{
    const auto block = Block::EnterOptional(cursor, "FRAM");
    if (!block)
        return false;

    static_cast<void>(cursor.GetLong()); // not used
    const std::int32_t frame = cursor.GetLong();
    waiting.Take(frame, FrameCount, cursor);

    block->Leave(cursor);
    return true;
}

} // namespace ZLMIM
