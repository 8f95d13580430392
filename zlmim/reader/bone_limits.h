#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/reader/load_limits.h"

#include <cstdint>
#include <string>

namespace ZLMIM
{

/// Checks the level of a bone. The root has level 1.
/// @throws BoundsError past `kMaxBoneDepth`.
/// \ingroup inside
inline void TestBoneLevel(std::int32_t level)
{
    if (level > kMaxBoneDepth)
        throw BoundsError("a skeleton with more than " + std::to_string(kMaxBoneDepth) +
                              " levels (kMaxBoneDepth)",
                          kMaxBoneDepth);
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
            throw BoundsError("a skeleton with more than " + std::to_string(kMaxBones) + " bones (kMaxBones)",
                              kMaxBones);
        ++mCount;
    }

private:
    std::int32_t mCount = 0;
};

} // namespace ZLMIM
