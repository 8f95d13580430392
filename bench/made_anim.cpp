#include "bench/made_anim.h"

#include "tests/good_files.h"

#include <cstdint>

namespace Bench
{

using ZLMIM::Keyframe;
using ZLMIM::Testing::AnimBone;
using ZLMIM::Testing::AnimWith;
using ZLMIM::Testing::Bytes;

MadeAnim MakeAnim(std::size_t bones, std::size_t frames)
{
    Bytes leaves;
    for (std::size_t i = 1; i < bones; ++i)
        leaves.Append(AnimBone("b.r.leaf" + std::to_string(i)));
    const Bytes root = AnimBone("b.r.root", static_cast<std::int32_t>(bones - 1), leaves);
    Bytes file = AnimWith(static_cast<std::int32_t>(frames), root);
    const std::size_t firstFrame = file.Size();
    for (std::size_t f = 0; f < frames; ++f)
    {
        Bytes frame = Bytes().Long(0).Long(static_cast<std::int32_t>(f));
        for (std::size_t b = 0; b < bones; ++b)
            frame.Record(Keyframe{{static_cast<float>(f), static_cast<float>(b), 0}, {0, 0, 0, 1}});
        file.Block("FRAM", frame);
    }
    return {file.Str(), bones, frames, firstFrame};
}

} // namespace Bench
