#include "mesh_geometry.h"

#include "words.h"

#include "tools/common/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace ZLMIM::Validate
{
namespace
{

using Tools::Counted;

/// How far the length of a normal may be from 1. Normals that a tool has kept as three signed bytes are off
/// by a part in 127 at most; nobody sees that in the shading.
constexpr float kNormalTolerance = 0.01F;

/// A triangle has no area if its height is at most one rounding step of its largest coordinate: no 32-bit
/// corners could make it flatter but those of a line.
constexpr double kRoundingStep = std::numeric_limits<float>::epsilon();

/// Indices are stored as 16 bits, signed.
constexpr std::size_t kMostReachableVertices = 32'768;

/// A kind of primitive, and how many of them a run of indices makes.
struct Kind
{
    std::string_view One;
    std::string_view Many;
    /// Indices that the first one takes, and each further one.
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

/// nullptr for a number that is no kind.
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

class GeometryJudge
{
public:
    GeometryJudge(const Geometry& geometry, const std::string& chunk, Report& report)
        : mGeometry(geometry), mKind(KindOf(geometry.PrimitiveType)), mChunk(chunk), mReport(report)
    {
    }

    void Judge()
    {
        JudgeCounts();
        JudgeIndices();
        if (mKind)
            JudgePrimitives(*mKind);
        else
            mReport.Add(Code::PrimitiveKind, mChunk,
                        std::to_string(static_cast<std::int32_t>(mGeometry.PrimitiveType)) +
                            " is no kind of primitive");
        JudgeVertices();
        JudgeNormals(mGeometry.VertexNormals(), "normal ", 0);
        JudgeNormals(mGeometry.FaceNormals->Entries(), "face normal ", 1);
        if (mKind && mKind->IsFace)
            JudgeTriangles();
    }

private:
    void JudgeCounts()
    {
        const auto judge = [this](std::int32_t count, const std::string& what)
        {
            if (count < 0)
                mReport.Add(Code::NegativeCount, mChunk, "a count of " + std::to_string(count) + " " + what);
        };
        judge(mGeometry.MaxVertices(), "vertices");
        judge(mGeometry.MaxIndex(), "indices");
        judge(mGeometry.PrimitiveCount, "primitives");
    }

    [[nodiscard]] bool IsVertex(std::int32_t index) const
    {
        return static_cast<std::uint32_t>(index) < mGeometry.Vertices().size();
    }

    void JudgeIndices()
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
            message += "; indices reach no more than 32,768 vertices";
        Add(Code::IndexOutside, "index ", outside, message);
    }

    void JudgePrimitives(const Kind& kind)
    {
        const std::int64_t indices = std::max(mGeometry.MaxIndex(), 0);
        const std::int64_t made = PrimitivesMade(mGeometry, kind);
        const bool hasRest = kind.Next > 1 && indices % kind.Next != 0;
        // A negative count is told as such.
        if (mGeometry.PrimitiveCount >= 0 && (mGeometry.PrimitiveCount != made || hasRest))
        {
            std::string message = "a count of " + Tools::Number(mGeometry.PrimitiveCount) + ", where " +
                                  Counted(indices, "index makes ", "indices make ") +
                                  Counted(made, kind.One, kind.Many);
            if (mGeometry.PrimitiveType == PrimFlag::NONE)
                message += " of the kind NONE";
            if (hasRest)
                message += " and a part of one";
            mReport.Add(Code::PrimitiveCount, mChunk, std::move(message));
        }
        // Lines and points may do without; where the two counts of faces differ, either will do.
        const std::int64_t normals = mGeometry.FaceNormals->Count();
        if (normals != made && normals != mGeometry.PrimitiveCount && (kind.IsFace || normals != 0))
            mReport.Add(Code::FaceNormalCount, mChunk,
                        Counted(normals, "face normal", "face normals") + " for " +
                            Counted(made, kind.One, kind.Many));
    }

    void JudgeVertices()
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
    }

    void JudgeNormals(std::span<const Vector> normals, std::string_view what, std::int64_t first)
    {
        constexpr float kLeast = (1 - kNormalTolerance) * (1 - kNormalTolerance);
        constexpr float kMost = (1 + kNormalTolerance) * (1 + kNormalTolerance);
        // Lines and points are drawn without them.
        const bool isLengthJudged = mKind && mKind->IsFace;
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
            else if (isLengthJudged)
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

    void JudgeTriangles()
    {
        const auto indices = mGeometry.Indices();
        const bool isStrip = mGeometry.PrimitiveType == PrimFlag::TRI_STRIP;
        const bool isFan = mGeometry.PrimitiveType == PrimFlag::TRI_FAN;
        const std::int64_t count = PrimitivesMade(mGeometry, *mKind);
        Tally flat;
        for (std::int64_t i = 0; i < count; ++i)
        {
            const auto next = static_cast<std::size_t>(isStrip || isFan ? i : 3 * i);
            const std::array corners = {indices[isFan ? 0 : next], indices[next + 1], indices[next + 2]};
            if (!std::all_of(corners.begin(), corners.end(), [this](auto index) { return IsVertex(index); }))
                continue;
            // A strip goes on elsewhere by a triangle that has a corner twice.
            if (isStrip && (corners[0] == corners[1] || corners[1] == corners[2] || corners[0] == corners[2]))
                continue;
            if (IsFlat(corners))
                flat.Note(i);
        }
        if (flat.Count() > 0)
            Add(Code::DegenerateTriangle, "triangle ", flat, "it has no area" + flat.AndMore());
    }

    /// False as well for corners that aren't finite.
    [[nodiscard]] bool IsFlat(const std::array<std::int32_t, 3>& corners) const
    {
        const auto vertices = mGeometry.Vertices();
        const Vertex& a = vertices[static_cast<std::size_t>(corners[0])];
        const Vertex& b = vertices[static_cast<std::size_t>(corners[1])];
        const Vertex& c = vertices[static_cast<std::size_t>(corners[2])];
        const std::array ab = {double{b.x} - a.x, double{b.y} - a.y, double{b.z} - a.z};
        const std::array ac = {double{c.x} - a.x, double{c.y} - a.y, double{c.z} - a.z};
        const std::array bc = {double{c.x} - b.x, double{c.y} - b.y, double{c.z} - b.z};
        const std::array cross = {ab[1] * ac[2] - ab[2] * ac[1], ab[2] * ac[0] - ab[0] * ac[2],
                                  ab[0] * ac[1] - ab[1] * ac[0]};
        const auto square = [](const std::array<double, 3>& v)
        { return v[0] * v[0] + v[1] * v[1] + v[2] * v[2]; };
        double largest = 0;
        for (const Vertex* v : {&a, &b, &c})
            largest =
                std::max({largest, std::abs(double{v->x}), std::abs(double{v->y}), std::abs(double{v->z})});
        // The cross product is as long as the longest side times the height on it.
        const double step = kRoundingStep * largest;
        return largest <= std::numeric_limits<float>::max() &&
               square(cross) <= std::max({square(ab), square(ac), square(bc)}) * step * step;
    }

    void Add(Code code, std::string_view what, const Tally& tally, std::string message)
    {
        mReport.Add(code, mChunk + ", " + std::string(what) + std::to_string(tally.First()),
                    std::move(message));
    }

    const Geometry& mGeometry;
    const Kind* mKind;
    const std::string& mChunk;
    Report& mReport;
};

} // namespace

void JudgeGeometry(const Geometry& geometry, const std::string& chunk, Report& report)
{
    GeometryJudge(geometry, chunk, report).Judge();
}

} // namespace ZLMIM::Validate
