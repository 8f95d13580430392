#ifndef ZLMIM_TOOLS_PICTURE_DRAWING_H
#define ZLMIM_TOOLS_PICTURE_DRAWING_H

#include "scene.h"

#include <cstddef>
#include <glm/glm.hpp>
#include <string>
#include <vector>

namespace ZLMIM::Picture
{

/// Where the viewer is. From the top and the bottom, forward is to the right. The corner is in front, to the
/// right and above.
enum class Side
{
    Front,
    Back,
    Left,
    Right,
    Top,
    Bottom,
    Corner,
};

constexpr glm::u8vec3 kBackground = {236, 240, 244};

/// What would cover the picture more often than this, all triangles together, isn't drawn: it would take too
/// long.
constexpr double kMaxLayers = 32;

/// The pixels of a picture, row by row from the top.
struct Image
{
    int Width = 0;
    int Height = 0;
    std::vector<glm::u8vec3> Pixels;
    /// Triangles that weren't drawn.
    std::size_t LeftOut = 0;
};

/// Draws the triangles as large as the picture allows, in parallel projection, so that lengths compare. What
/// is nearer hides what is farther. Both sides of a triangle show; the more it faces the light, which comes
/// from over the viewer's left shoulder, the brighter.
[[nodiscard]] Image Draw(const std::vector<Triangle>& triangles, Side from, int width, int height);

/// The bytes of a PNG file.
/// @throws std::runtime_error if it can't be made.
[[nodiscard]] std::string ToPng(const Image& image);

} // namespace ZLMIM::Picture

#endif
