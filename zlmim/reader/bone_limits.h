#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/reader/load_limits.h"

#include <cstdint>

namespace ZLMIM
{

/// Checks the level of a bone. The root has level 1.
/// @throws BoundsError past `kMaxBoneDepth`.
/// \ingroup inside
inline void TestBoneLevel(std::int32_t level)
{
    if (level > kMaxBoneDepth)
        ThrowLimit("a skeleton with more than ", kMaxBoneDepth, " levels (kMaxBoneDepth)");
}

/// Counts the bones of one skeleton.
/// \ingroup inside
class BoneLimits
{
public:
    /// Counts another bone, at `level`.
    /// @throws BoundsError past `kMaxBones` or `kMaxBoneDepth`.
    void Count(std::int32_t level)
    {
        TestBoneLevel(level);
        if (mCount == kMaxBones)
            ThrowLimit("a skeleton with more than ", kMaxBones, " bones (kMaxBones)");
        ++mCount;
    }

private:
    std::int32_t mCount = 0;
};

} // namespace ZLMIM
