#include "mesh_geometry.h"

#include "finite.h"
#include "mesh_material.h"
#include "tally.h"

#include "tools/common/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

using Tools::Counted;

/// How far the length of a normal may be from 1. Normals that were once stored as three signed bytes are off
/// by at most 1/127, which isn't visible.
constexpr float kNormalTolerance = 0.01F;

/// A triangle has no area if its height is at most one rounding step of its largest coordinate.
constexpr double kRoundingStep = std::numeric_limits<float>::epsilon();

/// Indices have 16 bits. In a chunk with more vertices than fit into 15 of them, they are taken as unsigned.
constexpr std::size_t kMostSignedVertices = 32'768;
constexpr std::size_t kMostReachableVertices = 65'536;

/// No asset is that large; a coordinate beyond it comes from a damaged file. In metres.
constexpr float kFar = 100'000;

/// Triangles whose direction deviates this much from their normals, as a cosine, are wound the other way.
constexpr double kReversed = 0.3;
/// The share of a chunk's triangles that may be reversed for the chunk to count as consistent otherwise.
constexpr double kFewReversed = 0.4;

/// A kind of primitive, and how many indices it takes.
struct Kind
{
    std::string_view One;
    std::string_view Many;
    /// Indices for the first primitive, and for each further one.
    std::int64_t First = 1;
    std::int64_t Next = 1;
    bool IsFace = false;
};

/// By the values of `PrimFlag`.
constexpr std::array<Kind, 7> kKinds = {{
    {"primitive", "primitives"},
    {"point", "points"},
    {"line", "lines", 2, 2},
    {"line of a strip", "lines of a strip", 2, 1},
    {"triangle", "triangles", 3, 3, true},
    {"triangle of a strip", "triangles of a strip", 3, 1, true},
    {"triangle of a fan", "triangles of a fan", 3, 1, true},
}};

/// Null for a number that isn't a kind.
const Kind* KindOf(PrimFlag flag)
{
    const auto number = static_cast<std::int64_t>(flag);
    return number >= 0 && number < std::ssize(kKinds) ? &kKinds[static_cast<std::size_t>(number)] : nullptr;
}

std::int64_t PrimitivesMade(const Geometry& geometry, const Kind& kind)
{
    const std::int64_t indices = std::max(geometry.MaxIndex(), 0);
    if (geometry.PrimitiveType == PrimFlag::NONE || indices < kind.First)
        return 0;
    return 1 + (indices - kind.First) / kind.Next;
}

class GeometryChecker
{
public:
    GeometryChecker(const Geometry& geometry, std::int32_t chunk, Report& report)
        : mGeometry(geometry), mKind(KindOf(geometry.PrimitiveType)), mChunk(chunk), mReport(report)
    {
    }

    void Check()
    {
        CheckCounts();
        CheckIndices();
        if (mKind)
            CheckPrimitives(*mKind);
        else
            mReport.Add(Code::PrimitiveKind, ChunkPlace(mChunk),
                        std::to_string(static_cast<std::int32_t>(mGeometry.PrimitiveType)) +
                            " is no kind of primitive");
        if (mGeometry.MaxVertices() == 0)
            mReport.Add(Code::ChunkEmpty, ChunkPlace(mChunk), "it has no vertices");
        else if (mGeometry.MaxIndex() == 0)
            mReport.Add(Code::ChunkEmpty, ChunkPlace(mChunk),
                        "it has vertices but no indices, so nothing of it is drawn");
        CheckVertices();
        CheckNormals(mGeometry.VertexNormals(), "normal ", 0);
        CheckNormals(mGeometry.FaceNormals->Entries(), "face normal ", 1);
        if (mKind && mKind->IsFace)
            CheckTriangles();
    }

private:
    void CheckCounts()
    {
        const auto check = [this](std::int32_t count, const std::string& what)
        {
            if (count < 0)
                mReport.Add(Code::NegativeCount, ChunkPlace(mChunk),
                            "a count of " + std::to_string(count) + " " + what);
        };
        check(mGeometry.MaxVertices(), "vertices");
        check(mGeometry.MaxIndex(), "indices");
        check(mGeometry.PrimitiveCount, "primitives");
    }

    /// The vertex number of an index.
    [[nodiscard]] std::int32_t VertexOf(std::int32_t index) const
    {
        const bool isUnsigned = mGeometry.Vertices().size() > kMostSignedVertices && index >= -32'768;
        return isUnsigned ? index & 0xFFFF : index;
    }

    [[nodiscard]] bool IsVertex(std::int32_t index) const
    {
        return static_cast<std::uint32_t>(VertexOf(index)) < mGeometry.Vertices().size();
    }

    void CheckIndices()
    {
        const auto indices = mGeometry.Indices();
        Tally outside;
        for (std::size_t i = 0; i < indices.size(); ++i)
        {
            if (!IsVertex(indices[i]))
                outside.Note(static_cast<std::int64_t>(i));
        }
        if (outside.Count() == 0)
            return;
        const std::size_t vertices = mGeometry.Vertices().size();
        std::string message = "vertex " + std::to_string(indices[static_cast<std::size_t>(outside.First())]) +
                              " of " + Counted(static_cast<std::int64_t>(vertices), "vertex", "vertices") +
                              outside.AndMore();
        if (vertices > kMostReachableVertices)
            message += "; indices reach no more than 65,536 vertices";
        Add(Code::IndexOutside, "index ", outside, message);
    }

    void CheckPrimitives(const Kind& kind)
    {
        const std::int64_t indices = std::max(mGeometry.MaxIndex(), 0);
        const std::int64_t made = PrimitivesMade(mGeometry, kind);
        const bool hasRest = kind.Next > 1 && indices % kind.Next != 0;
        // A negative count is reported separately.
        if (mGeometry.PrimitiveCount >= 0 && (mGeometry.PrimitiveCount != made || hasRest))
        {
            std::string message = "a count of " + Tools::Number(mGeometry.PrimitiveCount) + ", where " +
                                  Counted(indices, "index makes ", "indices make ") +
                                  Counted(made, kind.One, kind.Many);
            if (mGeometry.PrimitiveType == PrimFlag::NONE)
                message += " of the kind NONE";
            if (hasRest)
                message += " and a part of one";
            mReport.Add(Code::PrimitiveCount, ChunkPlace(mChunk), std::move(message));
        }
        // A chunk may have no face normals. If the two counts of faces differ, either one is accepted.
        const std::int64_t normals = mGeometry.FaceNormals->Count();
        if (normals != made && normals != mGeometry.PrimitiveCount && normals != 0)
            mReport.Add(Code::FaceNormalCount, ChunkPlace(mChunk),
                        Counted(normals, "face normal", "face normals") + " for " +
                            Counted(made, kind.One, kind.Many));
    }

    void CheckVertices()
    {
        const auto vertices = mGeometry.Vertices();
        Tally bad;
        for (std::size_t i = 0; i < vertices.size(); ++i)
        {
            if (!AreFinite(vertices[i]))
                bad.Note(static_cast<std::int64_t>(i));
        }
        if (bad.Count() > 0)
            Add(Code::NotFinite, "vertex ", bad, "a coordinate is infinite or NaN" + bad.AndMore());
        Tally far;
        for (std::size_t i = 0; i < vertices.size(); ++i)
        {
            const auto& [x, y, z, u, v] = vertices[i];
            if (std::isfinite(x * y * z) && std::max({std::abs(x), std::abs(y), std::abs(z)}) > kFar)
                far.Note(static_cast<std::int64_t>(i));
        }
        if (far.Count() > 0)
            Add(Code::VertexFar, "vertex ", far, "it is more than 100 km from the origin" + far.AndMore());
    }

    void CheckNormals(std::span<const Vector> normals, std::string_view what, std::int64_t first)
    {
        constexpr float kLeast = (1 - kNormalTolerance) * (1 - kNormalTolerance);
        constexpr float kMost = (1 + kNormalTolerance) * (1 + kNormalTolerance);
        // Lines and points are drawn without them.
        const bool isLengthChecked = mKind && mKind->IsFace;
        Tally bad;
        Tally wrong;
        for (std::size_t i = 0; i < normals.size(); ++i)
        {
            const Vector& n = normals[i];
            const float square = n.x * n.x + n.y * n.y + n.z * n.z;
            if (square >= kLeast && square <= kMost)
                continue;
            const std::int64_t number = first + static_cast<std::int64_t>(i);
            if (!AreFinite(n))
                bad.Note(number);
            else if (isLengthChecked)
                wrong.Note(number);
        }
        if (bad.Count() > 0)
            Add(Code::NotFinite, what, bad, "a coordinate is infinite or NaN" + bad.AndMore());
        if (wrong.Count() == 0)
            return;
        const Vector& n = normals[static_cast<std::size_t>(wrong.First() - first)];
        Add(Code::NormalLength, what, wrong,
            "of length " + Tools::Decimal(std::hypot(n.x, n.y, n.z)) + wrong.AndMore());
    }

    void CheckTriangles()
    {
        const auto indices = mGeometry.Indices();
        const bool isStrip = mGeometry.PrimitiveType == PrimFlag::TRI_STRIP;
        const bool isFan = mGeometry.PrimitiveType == PrimFlag::TRI_FAN;
        const std::int64_t count = PrimitivesMade(mGeometry, *mKind);
        Tally flat;
        Tally with;
        Tally against;
        Tally turned;
        std::int64_t compared = 0;
        std::vector<Triangle> triangles;
        for (std::int64_t i = 0; i < count; ++i)
        {
            const auto next = static_cast<std::size_t>(isStrip || isFan ? i : 3 * i);
            Corners corners = {indices[isFan ? 0 : next], indices[next + 1], indices[next + 2]};
            if (!std::all_of(corners.begin(), corners.end(), [this](auto index) { return IsVertex(index); }))
                continue;
            // Strips are joined by triangles that have a corner twice.
            if (isStrip && (corners[0] == corners[1] || corners[1] == corners[2] || corners[0] == corners[2]))
                continue;
            for (std::int32_t& corner : corners)
                corner = VertexOf(corner);
            // Every other triangle of a strip runs the other way round.
            if (isStrip && i % 2 == 1)
                std::swap(corners[0], corners[1]);
            if (IsFlat(corners))
            {
                flat.Note(i);
                continue;
            }
            triangles.push_back(TriangleOf(corners, i));
            if (const double direction = Direction(corners, i, count); direction > kReversed)
                with.Note(i);
            else if (direction < -kReversed)
                against.Note(i);
            if (mGeometry.FaceNormals->Count() == count)
            {
                const double cosine =
                    Cosine(PointOf(mGeometry.FaceNormals->Entries()[static_cast<std::size_t>(i)]),
                           CornerNormals(corners));
                compared += std::abs(cosine) > kReversed ? 1 : 0;
                if (cosine < -kReversed)
                    turned.Note(1 + i);
            }
        }
        if (flat.Count() > 0)
            Add(Code::DegenerateTriangle, "triangle ", flat, "it has no area" + flat.AndMore());
        CheckTwice(std::move(triangles));
        // At an edge of a rounded surface, a few may differ.
        if (2 * turned.Count() > compared)
            Add(Code::FaceNormalReversed, "face normal ", turned,
                "it points away from the normals of its face's corners" + turned.AndMore());
        // Either way round may be the front, but not both.
        const Tally& few = with.Count() < against.Count() ? with : against;
        const std::int64_t all = with.Count() + against.Count();
        if (few.Count() > 0 && static_cast<double>(few.Count()) <= kFewReversed * static_cast<double>(all))
            Add(Code::FaceReversed, "triangle ", few,
                "its corners run the other way round than those of the chunk's other triangles, seen along "
                "their "
                "normals" +
                    few.AndMore());
    }

    using Corners = std::array<std::int32_t, 3>;
    using Point = std::array<double, 3>;
    /// Small, since a chunk may have many millions of them.
    struct Triangle
    {
        std::array<std::uint16_t, 3> Corners;
        std::int32_t Number;

        [[nodiscard]] bool operator<(const Triangle& other) const
        {
            return std::tie(Corners, Number) < std::tie(other.Corners, other.Number);
        }
    };

    /// The triangle with its corners in the same direction, beginning with the least one.
    static Triangle TriangleOf(Corners corners, std::int64_t number)
    {
        std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
        const auto narrow = [](std::int32_t corner) { return static_cast<std::uint16_t>(corner); };
        return {{narrow(corners[0]), narrow(corners[1]), narrow(corners[2])},
                static_cast<std::int32_t>(number)};
    }

    void CheckTwice(std::vector<Triangle> triangles)
    {
        std::sort(triangles.begin(), triangles.end());
        std::vector<std::int32_t> again;
        for (std::size_t i = 1; i < triangles.size(); ++i)
            if (triangles[i].Corners == triangles[i - 1].Corners)
                again.push_back(triangles[i].Number);
        std::sort(again.begin(), again.end());
        Tally twice;
        for (const std::int32_t number : again)
            twice.Note(number);
        if (twice.Count() > 0)
            Add(Code::TriangleTwice, "triangle ", twice,
                "an earlier triangle has the same corners" + twice.AndMore());
    }

    static double Dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
    static Point Difference(const Vertex& a, const Vertex& b)
    {
        return {double{a.x} - b.x, double{a.y} - b.y, double{a.z} - b.z};
    }
    static Point Cross(const Point& a, const Point& b)
    {
        return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    }

    [[nodiscard]] const Vertex& VertexAt(std::int32_t number) const
    {
        return mGeometry.Vertices()[static_cast<std::size_t>(number)];
    }

    /// The cosine of the angle between the normal computed from a triangle's corners and the stored one. That
    /// is the face normal if there is one for each face, otherwise the sum of the corners' normals. 0 if it
    /// can't be computed.
    [[nodiscard]] double Direction(const Corners& corners, std::int64_t face, std::int64_t faceCount) const
    {
        const auto faceNormals = mGeometry.FaceNormals->Entries();
        const Point stored = std::ssize(faceNormals) == faceCount
                                 ? PointOf(faceNormals[static_cast<std::size_t>(face)])
                                 : CornerNormals(corners);
        const Vertex& a = VertexAt(corners[0]);
        return Cosine(Cross(Difference(VertexAt(corners[1]), a), Difference(VertexAt(corners[2]), a)),
                      stored);
    }

    static Point PointOf(const Vector& v) { return {v.x, v.y, v.z}; }

    /// The cosine of the angle between two directions; 0 if it can't be computed.
    static double Cosine(const Point& a, const Point& b)
    {
        const double cosine = Dot(a, b) / std::sqrt(Dot(a, a) * Dot(b, b));
        return std::isfinite(cosine) ? cosine : 0;
    }

    /// The sum of the normals of a triangle's corners.
    [[nodiscard]] Point CornerNormals(const Corners& corners) const
    {
        Point sum = {};
        for (const std::int32_t corner : corners)
            if (const auto i = static_cast<std::size_t>(corner); i < mGeometry.VertexNormals().size())
            {
                const Vector& n = mGeometry.VertexNormals()[i];
                sum = {sum[0] + n.x, sum[1] + n.y, sum[2] + n.z};
            }
        return sum;
    }

    /// False as well for corners that aren't finite.
    [[nodiscard]] bool IsFlat(const Corners& corners) const
    {
        const Vertex& a = VertexAt(corners[0]);
        const Vertex& b = VertexAt(corners[1]);
        const Vertex& c = VertexAt(corners[2]);
        const Point ab = Difference(b, a);
        const Point ac = Difference(c, a);
        const Point bc = Difference(c, b);
        const Point cross = Cross(ab, ac);
        double largest = 0;
        for (const Vertex* v : {&a, &b, &c})
            largest =
                std::max({largest, std::abs(double{v->x}), std::abs(double{v->y}), std::abs(double{v->z})});
        // The cross product is as long as the longest side times the height on it.
        const double step = kRoundingStep * largest;
        return largest <= std::numeric_limits<float>::max() &&
               Dot(cross, cross) <= std::max({Dot(ab, ab), Dot(ac, ac), Dot(bc, bc)}) * step * step;
    }

    void Add(Code code, std::string_view what, const Tally& tally, std::string message)
    {
        mReport.Add(code, ChunkPlace(mChunk, std::string(what) + std::to_string(tally.First())),
                    std::move(message));
    }

    const Geometry& mGeometry;
    const Kind* mKind;
    std::int32_t mChunk;
    Report& mReport;
};

} // namespace

void CheckGeometry(const Geometry& geometry, std::int32_t chunk, Report& report)
{
    GeometryChecker(geometry, chunk, report).Check();
}

} // namespace ZLMIM::Validate
