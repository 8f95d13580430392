#include "bench/cases.h"
#include "bench/floor.h"
#include "tests/good_files.h"
#include "zlmim/anim/anim.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace Bench
{

using ZLMIM::Keyframe;
using ZLMIM::Testing::AnimBone;
using ZLMIM::Testing::AnimWith;
using ZLMIM::Testing::Bytes;

Case LargeAnimation(const TempFolder& folder)
{
    constexpr std::size_t kBones = 100;
    constexpr std::size_t kFrames = 10'000;
    constexpr std::size_t kFrameHead = 16;
    Bytes leaves;
    for (std::size_t i = 1; i < kBones; ++i)
        leaves.Append(AnimBone("b.r.leaf" + std::to_string(i)));
    Bytes file = AnimWith(kFrames, AnimBone("b.r.root", kBones - 1, leaves));
    const std::size_t firstFrame = file.Size();
    for (std::size_t f = 0; f < kFrames; ++f)
    {
        Bytes frame = Bytes().Long(0).Long(static_cast<std::int32_t>(f));
        for (std::size_t b = 0; b < kBones; ++b)
            frame.Record(Keyframe{{static_cast<float>(f), static_cast<float>(b), 0}, {0, 0, 0, 1}});
        file.Block("FRAM", frame);
    }
    folder.Write("large.kin", file.Str());

    const auto library = [name = folder.Name(u"large.kin")]
    {
        ZLMIM::Anim anim;
        return Timed(
            [&]
            {
                if (!anim.Load(name))
                    throw std::runtime_error("the made-up animation doesn't load");
            });
    };
    const auto floor = [path = folder.Path() / "large.kin", firstFrame]
    {
        std::vector<void*> tables;
        const double seconds = Timed(
            [&]
            {
                const RawFile raw = ReadRawFile(path);
                for (std::size_t b = 0; b < kBones; ++b)
                    tables.push_back(std::malloc((kFrames + 1) * sizeof(Keyframe)));
                const unsigned char* record = raw.bytes + firstFrame;
                for (std::size_t f = 0; f < kFrames; ++f)
                {
                    record += kFrameHead;
                    for (void* const table : tables)
                    {
                        std::memcpy(static_cast<Keyframe*>(table) + f, record, sizeof(Keyframe));
                        record += sizeof(Keyframe);
                    }
                }
                std::free(raw.bytes);
            });
        FreeAll(tables);
        return seconds;
    };
    return {"an animation of 100 bones x 10,000 frames", library, floor, 0.9};
}

} // namespace Bench
