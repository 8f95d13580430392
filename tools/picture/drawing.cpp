#include "drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>
#include <utility>

namespace ZLMIM::Picture
{
namespace
{

/// The picture is drawn this many times, each time with other sample positions within the pixels, and
/// averaged.
constexpr int kPasses = 16;

/// The cost of a row of a face in addition to its samples, in samples.
constexpr double kCostOfRow = 8;

constexpr double kMargin = 0.04;
constexpr double kAmbient = 0.5;
/// The direction to the light, as the viewer sees it; of unit length.
constexpr glm::dvec3 kLight = {-0.28, 0.6, 0.75};

/// Widths of lines and points, in pixels.
constexpr double kLineWidth = 1.5;
constexpr double kPointWidth = 3;

/// A triangle in the picture: x right and y down in pixels, z towards the viewer; the topmost corner first.
struct Face
{
    std::array<glm::dvec3, 3> Corners;
    std::array<glm::vec2, 3> Coordinates;
    const Picture::Surface* Surface;
    float Light;
};

Turn Look(const glm::dvec3& viewer, const glm::dvec3& up)
{
    return Turn(glm::lookAt(viewer, glm::dvec3(0), up));
}

float LightOn(const Triangle& triangle, const Turn& turn)
{
    const glm::dvec3 first = triangle.Corners[0];
    glm::dvec3 normal =
        turn * glm::cross(glm::dvec3(triangle.Corners[1]) - first, glm::dvec3(triangle.Corners[2]) - first);
    normal = glm::normalize(normal.z < 0 ? -normal : normal);
    return static_cast<float>(kAmbient + (1 - kAmbient) * std::max(0.0, glm::dot(normal, kLight)));
}

/// Projects a scene onto the picture.
class Projection
{
public:
    Projection(const Frame& frame, int width, int height, double zoom)
        : mTurn(frame.Turned()), mMiddle(frame.Middle()), mCentre(width / 2.0, height / 2.0, 0)
    {
        const glm::dvec3 size = frame.Size();
        mScale = zoom * (1 - 2 * kMargin) * std::min(width / size.x, height / size.y);
        if (!std::isfinite(mScale))
            mScale = zoom;
    }

    [[nodiscard]] std::vector<Face> Faces(const Scene& scene) const
    {
        std::vector<Face> faces;
        faces.reserve(scene.Triangles.size());
        for (const Triangle& triangle : scene.Triangles)
        {
            Face face = {
                {}, triangle.Coordinates, &scene.Surfaces[triangle.Surface], LightOn(triangle, mTurn)};
            std::transform(triangle.Corners.begin(), triangle.Corners.end(), face.Corners.begin(),
                           [this](const glm::vec3& corner) { return Project(corner); });
            AddSorted(face, faces);
        }
        for (const Line& line : scene.Lines)
            AddLine(line, scene, faces);
        return faces;
    }

private:
    [[nodiscard]] glm::dvec3 Project(const glm::vec3& point) const
    {
        // Subtracts the middle before scaling, since small differences far from the origin would be lost.
        return mCentre + (mTurn * glm::dvec3(point) - mMiddle) * glm::dvec3(mScale, -mScale, mScale);
    }

    /// The topmost corner first.
    static void AddSorted(Face face, std::vector<Face>& faces)
    {
        for (const auto& [a, b] : {std::pair(0U, 1U), std::pair(1U, 2U), std::pair(0U, 1U)})
        {
            if (face.Corners[a].y <= face.Corners[b].y)
                continue;
            std::swap(face.Corners[a], face.Corners[b]);
            std::swap(face.Coordinates[a], face.Coordinates[b]);
        }
        faces.push_back(face);
    }

    /// A line is a thin rectangle that faces the viewer, a point a square.
    void AddLine(const Line& line, const Scene& scene, std::vector<Face>& faces) const
    {
        const glm::dvec3 a = Project(line.Ends[0]);
        const glm::dvec3 b = Project(line.Ends[1]);
        const glm::dvec2 way = glm::dvec2(b) - glm::dvec2(a);
        const double length = glm::length(way);
        const bool isPoint = !(length > 0);
        const glm::dvec2 along = isPoint ? glm::dvec2(kPointWidth / 2, 0) : way / length * (kLineWidth / 2);
        const glm::dvec3 forward = {along, 0};
        const glm::dvec3 aside = {-along.y, along.x, 0};
        const std::array corners = {a - forward - aside, b + forward - aside, b + forward + aside,
                                    a - forward + aside};
        for (const std::size_t second : {1U, 2U})
            AddSorted(
                {{corners[0], corners[second], corners[second + 1]}, {}, &scene.Surfaces[line.Surface], 1},
                faces);
    }

    Turn mTurn;
    glm::dvec3 mMiddle;
    glm::dvec3 mCentre;
    double mScale = 1;
};

/// Removes the faces that would take too long to draw, and returns their number.
std::size_t Limit(std::vector<Face>& faces, int width, int height)
{
    double left = kMaxLayers * width * height;
    return std::erase_if(faces,
                         [&](const Face& face)
                         {
                             // Only the part inside the picture takes time.
                             const auto& [a, b, c] = face.Corners;
                             const auto [low, high] = std::minmax({a.x, b.x, c.x});
                             const double columns = std::min<double>(high, width) - std::max(low, 0.0);
                             const double rows = std::min<double>(c.y, height) - std::max(a.y, 0.0);
                             if (columns <= 0 || rows <= 0)
                                 return false;
                             const double area = std::abs(glm::cross(b - a, c - a).z) / 2;
                             const double cost = std::min(area, columns * rows) + kCostOfRow * rows;
                             const bool isTooMuch = !(cost <= left);
                             if (!isTooMuch)
                                 left -= cost;
                             return isTooMuch;
                         });
}

/// A value that is interpolated linearly over a face.
template <class Value>
class Slope
{
public:
    Slope(const Face& face, const Value& a, const Value& b, const Value& c)
        : mOrigin(face.Corners[0]), mStart(a)
    {
        const glm::dvec3 ab = face.Corners[1] - mOrigin;
        const glm::dvec3 ac = face.Corners[2] - mOrigin;
        const double area = ab.x * ac.y - ac.x * ab.y;
        if (area == 0)
            return;
        mRight = ((b - a) * ac.y - (c - a) * ab.y) / area;
        mDown = ((c - a) * ab.x - (b - a) * ac.x) / area;
    }

    [[nodiscard]] Value At(double x, double y) const
    {
        return mStart + mRight * (x - mOrigin.x) + mDown * (y - mOrigin.y);
    }

private:
    glm::dvec3 mOrigin;
    Value mStart;
    Value mRight = Value(0);
    Value mDown = Value(0);
};

class Canvas
{
public:
    Canvas(int width, int height)
        : mWidth(width), mHeight(height),
          mPixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)), mDepths(mPixels.size())
    {
    }

    [[nodiscard]] const std::vector<glm::vec3>& Pixels() const { return mPixels; }

    void Clear()
    {
        std::fill(mPixels.begin(), mPixels.end(), glm::vec3(kBackground) / 255.0F);
        std::fill(mDepths.begin(), mDepths.end(), -std::numeric_limits<double>::infinity());
    }

    /// Draws a face. Each pixel is sampled at the position `sample` within it. A sample on the edge between
    /// two faces belongs to exactly one of them.
    void Draw(const Face& face, const glm::dvec2& sample)
    {
        const auto& [top, middle, bottom] = face.Corners;
        const Slope<double> depth(face, top.z, middle.z, bottom.z);
        const auto [nearest, farthest] = std::minmax({top.z, middle.z, bottom.z});
        const auto& [a, b, c] = face.Coordinates;
        const Slope<glm::dvec2> coordinates(face, a, b, c);
        const int end = FirstFrom(bottom.y - sample.y, mHeight);
        for (int y = FirstFrom(top.y - sample.y, mHeight); y < end; ++y)
        {
            const double row = y + sample.y;
            double left = Cross(top, bottom, row);
            double right = row < middle.y ? Cross(top, middle, row) : Cross(middle, bottom, row);
            if (left > right)
                std::swap(left, right);
            const int rowEnd = FirstFrom(right - sample.x, mWidth);
            for (int x = FirstFrom(left - sample.x, mWidth); x < rowEnd; ++x)
            {
                const double column = x + sample.x;
                const auto i = static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) +
                               static_cast<std::size_t>(x);
                const double here = std::clamp(depth.At(column, row), nearest, farthest);
                if (here > mDepths[i])
                    Put(i, here, face, coordinates.At(column, row));
            }
        }
    }

private:
    /// The first whole number that isn't below `position`, within the canvas.
    static int FirstFrom(double position, int size)
    {
        return static_cast<int>(std::clamp(std::ceil(position), 0.0, static_cast<double>(size)));
    }

    /// Where the edge from `a` down to `b` crosses a row.
    static double Cross(const glm::dvec3& a, const glm::dvec3& b, double row)
    {
        return a.x + (b.x - a.x) * ((row - a.y) / (b.y - a.y));
    }

    void Put(std::size_t i, double depth, const Face& face, const glm::dvec2& coordinates)
    {
        const Surface& surface = *face.Surface;
        glm::vec3 colour = surface.Colour * face.Light;
        if (surface.Diffuse)
            colour *= glm::vec3(surface.Diffuse->At(coordinates));
        if (surface.IsOpaque())
        {
            mPixels[i] = colour;
            mDepths[i] = depth;
            return;
        }
        float opacity = surface.Opacity;
        if (surface.Transparency)
        {
            const glm::vec4 texel = surface.Transparency->At(coordinates);
            opacity *= surface.Transparency->HasAlpha ? texel.a : (texel.r + texel.g + texel.b) / 3;
        }
        mPixels[i] = glm::mix(mPixels[i], colour, opacity);
    }

    int mWidth;
    int mHeight;
    std::vector<glm::vec3> mPixels;
    std::vector<double> mDepths;
};

/// Sample positions spread evenly over a pixel, no two in one row or column: one coordinate is `pass`, the
/// other its bits in reverse order.
glm::dvec2 SampleOf(int pass)
{
    int mirrored = 0;
    for (int bit = 1; bit < kPasses; bit *= 2)
        mirrored = mirrored * 2 + ((pass & bit) != 0 ? 1 : 0);
    return (glm::dvec2(mirrored, pass) + 0.5) / static_cast<double>(kPasses);
}

/// Opaque faces first, then the others from back to front.
void Sort(std::vector<Face>& faces)
{
    const auto translucent = std::stable_partition(faces.begin(), faces.end(),
                                                   [](const Face& face) { return face.Surface->IsOpaque(); });
    const auto depth = [](const Face& face)
    { return face.Corners[0].z + face.Corners[1].z + face.Corners[2].z; };
    std::stable_sort(translucent, faces.end(),
                     [&](const Face& a, const Face& b) { return depth(a) < depth(b); });
}

} // namespace

Turn TurnFrom(double azimuth, double elevation)
{
    const double a = glm::radians(azimuth);
    const double e = glm::radians(elevation);
    const glm::dvec3 viewer = {std::sin(a) * std::cos(e), std::cos(a) * std::cos(e), std::sin(e)};
    // Seen exactly from above or below, the up direction is that of a slightly lower or higher viewer.
    if (std::cos(e) < 1e-6)
        return Look(viewer, glm::dvec3(-std::sin(a), -std::cos(a), 0) * (e > 0 ? 1.0 : -1.0));
    return Look(viewer, {0, 0, 1});
}

Turn TurnFromCorner() { return Look({1, 0.75, 0.6}, {0, 0, 1}); }

Turn TurnFromTop() { return Look({0, 0, 1}, {-1, 0, 0}); }

Turn TurnFromBottom() { return Look({0, 0, -1}, {1, 0, 0}); }

void Frame::Include(const Scene& scene)
{
    const auto include = [this](const glm::vec3& point)
    {
        const glm::dvec3 turned = mTurn * glm::dvec3(point);
        mLow = glm::min(mLow, turned);
        mHigh = glm::max(mHigh, turned);
    };
    for (const Triangle& triangle : scene.Triangles)
        std::for_each(triangle.Corners.begin(), triangle.Corners.end(), include);
    for (const Line& line : scene.Lines)
        std::for_each(line.Ends.begin(), line.Ends.end(), include);
}

glm::dvec3 Frame::Size() const { return mHigh - mLow; }

glm::dvec3 Frame::Middle() const { return mLow.x <= mHigh.x ? (mLow + mHigh) / 2.0 : glm::dvec3(0); }

Drawing Draw(const Scene& scene, const Frame& frame, int width, int height, double zoom)
{
    std::vector<Face> faces = Projection(frame, width, height, zoom).Faces(scene);
    Drawing drawing = {{width, height, {}}, Limit(faces, width, height)};
    Sort(faces);
    Canvas canvas(width, height);
    std::vector<glm::vec3> sums(canvas.Pixels().size());
    for (int pass = 0; pass < kPasses; ++pass)
    {
        canvas.Clear();
        for (const Face& face : faces)
            canvas.Draw(face, SampleOf(pass));
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += canvas.Pixels()[i];
    }
    drawing.Image.Pixels.reserve(sums.size());
    for (const glm::vec3& sum : sums)
        drawing.Image.Pixels.emplace_back(glm::clamp(glm::round(sum * (255.0F / kPasses)), 0.0F, 255.0F));
    return drawing;
}

} // namespace ZLMIM::Picture
