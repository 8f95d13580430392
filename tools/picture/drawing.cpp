#include "drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>
#include <limits>
#include <utility>

namespace ZLMIM::Picture
{
namespace
{

/// The picture is drawn that many times, each time with its samples elsewhere in their pixels, and averaged.
constexpr int kPasses = 16;

/// What a row of a face costs beside its samples, in samples.
constexpr double kCostOfRow = 8;

constexpr double kMargin = 0.04;
constexpr double kAmbient = 0.5;
/// The way to the light, as the viewer sees it; of unit length.
constexpr glm::dvec3 kLight = {-0.28, 0.6, 0.75};

/// A triangle in the picture: x right and y down in pixels, z towards the viewer; the topmost corner first.
struct Face
{
    std::array<glm::dvec3, 3> Corners;
    glm::u8vec3 Colour;
};

/// Turns the viewer's right to x, up to y, and the way to the viewer to z.
glm::dmat3 Turn(Side from)
{
    const auto look = [](const glm::dvec3& viewer, const glm::dvec3& up)
    { return glm::dmat3(glm::lookAt(viewer, glm::dvec3(0), up)); };
    const glm::dvec3 up = {0, 0, 1};
    switch (from)
    {
    case Side::Front:
        return look({0, 1, 0}, up);
    case Side::Back:
        return look({0, -1, 0}, up);
    case Side::Left:
        return look({-1, 0, 0}, up);
    case Side::Right:
        return look({1, 0, 0}, up);
    case Side::Top:
        return look({0, 0, 1}, {-1, 0, 0});
    case Side::Bottom:
        return look({0, 0, -1}, {1, 0, 0});
    case Side::Corner:
        break;
    }
    return look({1, 0.75, 0.6}, up);
}

struct Bounds
{
    glm::dvec3 Low = glm::dvec3(std::numeric_limits<double>::infinity());
    glm::dvec3 High = -Low;

    void Include(const glm::dvec3& point)
    {
        Low = glm::min(Low, point);
        High = glm::max(High, point);
    }
    [[nodiscard]] glm::dvec3 Size() const { return High - Low; }
    [[nodiscard]] glm::dvec3 Middle() const { return (Low + High) / 2.0; }
};

glm::u8vec3 Shade(const Triangle& triangle, const glm::dmat3& turn)
{
    const glm::dvec3 first = triangle.Corners[0];
    glm::dvec3 normal =
        turn * glm::cross(glm::dvec3(triangle.Corners[1]) - first, glm::dvec3(triangle.Corners[2]) - first);
    normal = glm::normalize(normal.z < 0 ? -normal : normal);
    const double light = kAmbient + (1 - kAmbient) * std::max(0.0, glm::dot(normal, kLight));
    return glm::round(glm::dvec3(triangle.Colour) * light * 255.0);
}

std::vector<Face> Project(const std::vector<Triangle>& triangles, const glm::dmat3& turn, int width,
                          int height)
{
    Bounds asset;
    for (const Triangle& triangle : triangles)
        for (const glm::vec3& corner : triangle.Corners)
            asset.Include(corner);
    // Turned about its middle: far from the origin, turning would lose what is small.
    const auto turned = [&](const glm::vec3& point) { return turn * (glm::dvec3(point) - asset.Middle()); };
    Bounds seen;
    for (const Triangle& triangle : triangles)
        for (const glm::vec3& corner : triangle.Corners)
            seen.Include(turned(corner));

    const glm::dvec3 size = seen.Size();
    double scale = (1 - 2 * kMargin) * std::min(width / size.x, height / size.y);
    if (!std::isfinite(scale))
        scale = 1;
    const glm::dvec3 middle = {width / 2.0, height / 2.0, 0};
    std::vector<Face> faces;
    faces.reserve(triangles.size());
    for (const Triangle& triangle : triangles)
    {
        Face face = {{}, Shade(triangle, turn)};
        for (std::size_t i = 0; i < 3; ++i)
            face.Corners[i] =
                middle + (turned(triangle.Corners[i]) - seen.Middle()) * glm::dvec3(scale, -scale, scale);
        std::sort(face.Corners.begin(), face.Corners.end(),
                  [](const auto& a, const auto& b) { return a.y < b.y; });
        faces.push_back(face);
    }
    return faces;
}

/// Takes out the faces that would take too long to draw, and answers how many they are.
std::size_t Limit(std::vector<Face>& faces, int width, int height)
{
    double left = kMaxLayers * width * height;
    return std::erase_if(faces,
                         [&](const Face& face)
                         {
                             const auto& [a, b, c] = face.Corners;
                             const double area = std::abs(glm::cross(b - a, c - a).z) / 2;
                             const double cost = area + kCostOfRow * (c.y - a.y);
                             const bool isTooMuch = cost > left;
                             if (!isTooMuch)
                                 left -= cost;
                             return isTooMuch;
                         });
}

class Canvas
{
public:
    Canvas(int width, int height)
        : mWidth(width), mHeight(height),
          mPixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)), mDepths(mPixels.size())
    {
    }

    [[nodiscard]] const std::vector<glm::u8vec3>& Pixels() const { return mPixels; }

    void Clear()
    {
        std::fill(mPixels.begin(), mPixels.end(), kBackground);
        std::fill(mDepths.begin(), mDepths.end(), -std::numeric_limits<double>::infinity());
    }

    /// Draws a face; each pixel's sample is at `sample` in it. A sample on the edge between two faces belongs
    /// to exactly one of them.
    void Draw(const Face& face, const glm::dvec2& sample)
    {
        const auto& [top, middle, bottom] = face.Corners;
        const int end = FirstFrom(bottom.y - sample.y, mHeight);
        for (int y = FirstFrom(top.y - sample.y, mHeight); y < end; ++y)
        {
            const double row = y + sample.y;
            auto left = Cross(top, bottom, row);
            auto right = row < middle.y ? Cross(top, middle, row) : Cross(middle, bottom, row);
            if (left.x > right.x)
                std::swap(left, right);
            const double slope = (right.z - left.z) / (right.x - left.x);
            const int rowEnd = FirstFrom(right.x - sample.x, mWidth);
            for (int x = FirstFrom(left.x - sample.x, mWidth); x < rowEnd; ++x)
                Put(x, y, left.z + slope * (x + sample.x - left.x), face.Colour);
        }
    }

private:
    /// The first whole number that isn't below `position`, within the canvas.
    static int FirstFrom(double position, int size)
    {
        return static_cast<int>(std::clamp(std::ceil(position), 0.0, static_cast<double>(size)));
    }

    /// Where the edge from `a` down to `b` crosses a row.
    static glm::dvec3 Cross(const glm::dvec3& a, const glm::dvec3& b, double row)
    {
        return a + (b - a) * ((row - a.y) / (b.y - a.y));
    }

    void Put(int x, int y, double depth, const glm::u8vec3& colour)
    {
        const auto i =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) + static_cast<std::size_t>(x);
        if (depth <= mDepths[i])
            return;
        mDepths[i] = depth;
        mPixels[i] = colour;
    }

    int mWidth;
    int mHeight;
    std::vector<glm::u8vec3> mPixels;
    std::vector<double> mDepths;
};

/// Places that fill a pixel evenly, no two in one row or column: the bits of `pass`, mirrored, for the one
/// way, and `pass` for the other.
glm::dvec2 SampleOf(int pass)
{
    int mirrored = 0;
    for (int bit = 1; bit < kPasses; bit *= 2)
        mirrored = mirrored * 2 + ((pass & bit) != 0 ? 1 : 0);
    return (glm::dvec2(mirrored, pass) + 0.5) / static_cast<double>(kPasses);
}

} // namespace

Image Draw(const std::vector<Triangle>& triangles, Side from, int width, int height)
{
    std::vector<Face> faces = Project(triangles, Turn(from), width, height);
    Image image = {width, height, {}, Limit(faces, width, height)};
    Canvas canvas(width, height);
    std::vector<glm::u16vec3> sums(canvas.Pixels().size());
    for (int pass = 0; pass < kPasses; ++pass)
    {
        canvas.Clear();
        for (const Face& face : faces)
            canvas.Draw(face, SampleOf(pass));
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += canvas.Pixels()[i];
    }
    image.Pixels.reserve(sums.size());
    for (const glm::u16vec3& sum : sums)
        image.Pixels.emplace_back((sum + glm::u16vec3(kPasses / 2)) / glm::u16vec3(kPasses));
    return image;
}

} // namespace ZLMIM::Picture
