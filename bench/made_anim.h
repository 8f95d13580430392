#ifndef ZLMIM_BENCH_MADE_ANIM_H
#define ZLMIM_BENCH_MADE_ANIM_H

#include <cstddef>
#include <string>

namespace Bench
{

/// A generated animation file, and the position of its frames. The bones are a root and its children.
struct MadeAnim
{
    /// Bytes of a frame before its poses.
    static constexpr std::size_t kFrameHead = 16;

    std::string file;
    std::size_t bones = 0;
    std::size_t frames = 0;
    std::size_t firstFrame = 0;
};

[[nodiscard]] MadeAnim MakeAnim(std::size_t bones, std::size_t frames);

} // namespace Bench

#endif
