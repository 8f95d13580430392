#pragma once

#include "zlmim/reader/native_path.h"

#include <cstddef>
#include <glm/glm.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Picture
{

constexpr glm::u8vec3 kBackground = {236, 240, 244};

/// The pixels of a picture, row by row from the top.
struct Image
{
    int Width = 0;
    int Height = 0;
    std::vector<glm::u8vec3> Pixels;
};

/// A texture for triangles.
struct Texture
{
    int Width = 0;
    int Height = 0;
    std::vector<glm::u8vec4> Pixels;
    bool HasAlpha = false;

    /// The colour at a place, each component from 0 to 1. u runs to the right and v up; both repeat.
    [[nodiscard]] glm::vec4 At(glm::dvec2 uv) const;
};

/// Reads a TGA, BMP, PNG or JPEG file, if it is one and not too large.
[[nodiscard]] std::optional<Texture> ReadTexture(const NativePath& file);

/// The bytes of a PNG file.
/// @throws std::runtime_error if it can't be made.
[[nodiscard]] std::string ToPng(const Image& image);
[[nodiscard]] std::string ToPng(const Texture& texture);

/// The bytes of an animated PNG file that repeats forever. All images must be of one size.
/// @throws std::runtime_error if it can't be made.
[[nodiscard]] std::string ToAnimatedPng(const std::vector<Image>& images, int framesPerSecond);

/// Puts `part` into `image`, its upper left corner at x, y.
void Paste(Image& image, const Image& part, int x, int y);

/// Draws a text in a small font, as far as it fits into `width` pixels. Characters that aren't ASCII become
/// question marks.
void Write(Image& image, std::string_view text, int x, int y, int width);

} // namespace ZLMIM::Picture
