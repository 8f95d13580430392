#pragma once

#include "image.h"
#include "scene.h"

#include <cstddef>
#include <glm/glm.hpp>
#include <limits>
#include <vector>

namespace ZLMIM::Picture
{

/// Rotates so that x is the viewer's right, y is up, and z points to the viewer.
using Turn = glm::dmat3;

/// For a viewer at an angle around the asset and one above it, in degrees. From azimuth 0 the front is seen,
/// from 90 the right side; from elevation 90 the top.
[[nodiscard]] Turn TurnFrom(double azimuth, double elevation);

/// For a viewer in front, to the right and above.
[[nodiscard]] Turn TurnFromCorner();

/// For a viewer above (below): forward is to the right.
[[nodiscard]] Turn TurnFromTop();
[[nodiscard]] Turn TurnFromBottom();

/// The bounding box of scenes, as a viewer sees it.
class Frame
{
public:
    explicit Frame(const Turn& turn) : mTurn(turn) {}

    void Include(const Scene& scene);

    [[nodiscard]] const Turn& Turned() const { return mTurn; }
    [[nodiscard]] glm::dvec3 Size() const;
    [[nodiscard]] glm::dvec3 Middle() const;

private:
    Turn mTurn;
    glm::dvec3 mLow = glm::dvec3(std::numeric_limits<double>::infinity());
    glm::dvec3 mHigh = glm::dvec3(-std::numeric_limits<double>::infinity());
};

/// Limit: triangles that together would cover the picture more often than this aren't drawn, since that would
/// take too long.
constexpr double kMaxLayers = 32;

struct Drawing
{
    Picture::Image Image;
    /// Triangles that weren't drawn because of `kMaxLayers`.
    std::size_t Skipped = 0;
};

/// Draws a scene in parallel projection, so that lengths are comparable; `frame` fills the picture at a
/// `zoom` of 1. Both sides of a triangle are visible. The more a triangle faces the light, which comes from
/// over the viewer's left shoulder, the brighter it is. Translucent triangles are drawn last, from back to
/// front.
[[nodiscard]] Drawing Draw(const Scene& scene, const Frame& frame, int width, int height, double zoom = 1);

} // namespace ZLMIM::Picture
