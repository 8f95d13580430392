#ifndef ZLMIM_TOOLS_PICTURE_PICTURE_JOB_H
#define ZLMIM_TOOLS_PICTURE_PICTURE_JOB_H

#include "drawing.h"
#include "scene.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZLMIM::Tools
{

/// The pictures to draw, as the command line requests them.
struct PictureOptions
{
    std::vector<std::string> Paths = {};
    /// UTF-8; names derived from the paths if empty.
    std::string Output = {};
    Picture::Turn From = {};
    /// Pixels of one picture.
    std::array<int, 2> Size = {};
    double Zoom = 1;
    Picture::SceneRequest Request = {};
    /// Slot of the animations, or seconds from their start; at most one of them.
    std::optional<std::int64_t> Frame = {};
    std::optional<double> Time = {};
    bool IsAnimated = false;
    /// All assets in one picture.
    bool IsSheet = false;
};

/// Draws them, prints the names of the files, and what is wrong. Returns the exit status.
[[nodiscard]] int DrawPictures(const PictureOptions& options);

} // namespace ZLMIM::Tools

#endif
