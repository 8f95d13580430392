#include "geometry_export.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <glm/glm.hpp>
#include <limits>
#include <span>

namespace ZLMIM::Export
{
namespace
{

/// glTF's modes for the kinds of primitives that it has.
std::optional<std::int32_t> ModeOf(PrimFlag type)
{
    switch (type)
    {
    case PrimFlag::POINTS:
        return 0;
    case PrimFlag::LINES:
        return 1;
    case PrimFlag::LINE_STRIP:
        return 3;
    case PrimFlag::TRIANGLES:
        return 4;
    case PrimFlag::TRI_STRIP:
        return 5;
    case PrimFlag::TRI_FAN:
        return 6;
    default:
        return std::nullopt;
    }
}

/// Indices of one point, line or triangle.
std::size_t CornerCount(PrimFlag type)
{
    return type == PrimFlag::POINTS ? 1 : type == PrimFlag::LINES || type == PrimFlag::LINE_STRIP ? 2 : 3;
}

/// Whether its points, lines or triangles have no corners in common.
bool IsList(PrimFlag type)
{
    return type == PrimFlag::POINTS || type == PrimFlag::LINES || type == PrimFlag::TRIANGLES;
}

PrimFlag ListOf(PrimFlag type)
{
    return IsList(type) ? type : type == PrimFlag::LINE_STRIP ? PrimFlag::LINES : PrimFlag::TRIANGLES;
}

/// Where the corners of a point, line or triangle are among the indices. Every other triangle of a strip runs
/// the other way round, so its first two corners are swapped.
std::array<std::size_t, 3> CornersOf(PrimFlag type, std::size_t number)
{
    if (IsList(type))
    {
        const std::size_t first = number * CornerCount(type);
        return {first, first + 1, first + 2};
    }
    if (type == PrimFlag::TRI_FAN)
        return {0, number + 1, number + 2};
    const std::size_t odd = type == PrimFlag::TRI_STRIP ? number % 2 : 0;
    return {number + odd, number + 1 - odd, number + 2};
}

std::size_t ShapeCount(PrimFlag type, std::size_t indexCount)
{
    const std::size_t corners = CornerCount(type);
    if (IsList(type))
        return indexCount / corners;
    return indexCount < corners ? 0 : indexCount - corners + 1;
}

/// The vertex that an index means. Files store numbers from 32768 on as negative ones.
std::uint32_t VertexNumber(std::int32_t index)
{
    return index < 0 && index >= -32'768 ? static_cast<std::uint16_t>(index)
                                         : static_cast<std::uint32_t>(index);
}

/// Indices that all mean a vertex, and what they describe.
struct CheckedIndices
{
    PrimFlag Type = PrimFlag::NONE;
    std::vector<std::uint32_t> Wide;
    std::vector<std::uint16_t> Narrow;

    [[nodiscard]] std::size_t Count() const { return Wide.size() + Narrow.size(); }
    [[nodiscard]] std::uint32_t operator[](std::size_t i) const
    {
        return Narrow.empty() ? Wide[i] : Narrow[i];
    }
};

CheckedIndices CheckIndices(const Geometry& geometry, const Report& report)
{
    const PrimFlag type = geometry.PrimitiveType;
    const auto indices = geometry.Indices();
    const std::size_t vertexCount = geometry.Vertices().size();
    CheckedIndices checked = {type, {}, {}};
    std::uint32_t highest = 0;
    for (const std::int32_t index : indices)
        highest = std::max(highest, VertexNumber(index));
    const std::size_t shapes = ShapeCount(type, indices.size());
    // This number isn't allowed among narrow indices.
    constexpr std::uint32_t kRestart = 0xFFFF;
    if (highest < vertexCount && highest < kRestart)
    {
        const std::size_t count = IsList(type)  ? shapes * CornerCount(type)
                                  : shapes == 0 ? 0
                                                : indices.size();
        if (count < indices.size())
            report("indices that are too few for a further triangle or line are skipped");
        checked.Narrow.resize(count);
        std::transform(indices.begin(), indices.begin() + static_cast<std::ptrdiff_t>(count),
                       checked.Narrow.begin(),
                       [](std::int32_t index) { return static_cast<std::uint16_t>(index); });
        return checked;
    }
    checked.Type = ListOf(type);
    const std::size_t corners = CornerCount(type);
    bool isBroken = indices.size() != (IsList(type) ? shapes * corners : indices.size());
    for (std::size_t i = 0; i < shapes; ++i)
    {
        const auto places = CornersOf(type, i);
        const std::size_t before = checked.Wide.size();
        for (std::size_t c = 0; c < corners; ++c)
            checked.Wide.push_back(VertexNumber(indices[places.at(c)]));
        if (std::any_of(checked.Wide.begin() + static_cast<std::ptrdiff_t>(before), checked.Wide.end(),
                        [vertexCount](std::uint32_t number) { return number >= vertexCount; }))
        {
            checked.Wide.resize(before);
            isBroken = true;
        }
    }
    if (isBroken)
        report("triangles, lines and points with an index out of range are skipped");
    if (std::all_of(checked.Wide.begin(), checked.Wide.end(),
                    [](std::uint32_t number) { return number < kRestart; }))
    {
        checked.Narrow.assign(checked.Wide.begin(), checked.Wide.end());
        checked.Wide.clear();
    }
    return checked;
}

/// The box around vertices; `std::nullopt` if a number of theirs isn't finite.
std::optional<std::array<Vector, 2>> BoxAround(std::span<const Vertex> vertices)
{
    constexpr float kFar = std::numeric_limits<float>::infinity();
    Vector low = {kFar, kFar, kFar};
    Vector high = {-kFar, -kFar, -kFar};
    // Becomes NaN, and stays that, at the first number that isn't finite.
    float zero = 0;
    for (const auto& [x, y, z, u, v] : vertices)
    {
        low = {std::min(low.x, x), std::min(low.y, y), std::min(low.z, z)};
        high = {std::max(high.x, x), std::max(high.y, y), std::max(high.z, z)};
        zero += x * 0 + y * 0 + z * 0 + u * 0 + v * 0;
    }
    if (!std::isfinite(zero))
        return std::nullopt;
    return std::array{low, high};
}

glm::dvec3 Point(const Vertex& vertex) { return {vertex.x, vertex.y, vertex.z}; }
glm::dvec3 Direction(const Vector& vector) { return {vector.x, vector.y, vector.z}; }

Vector Unit(const glm::dvec3& direction)
{
    // In two steps, since the square of a large or small number may be out of range.
    const double most = std::max({std::abs(direction.x), std::abs(direction.y), std::abs(direction.z)});
    if (!std::isfinite(direction.x + direction.y + direction.z) || most == 0)
        return {0, 0, 0};
    const glm::dvec3 unit = glm::normalize(direction / most);
    return {static_cast<float>(unit.x), static_cast<float>(unit.y), static_cast<float>(unit.z)};
}

bool IsUnit(const Vector& normal)
{
    constexpr float kTolerance = 1e-3F;
    return std::abs(normal.x * normal.x + normal.y * normal.y + normal.z * normal.z - 1) < kTolerance;
}

/// For each vertex the normals of its triangles, larger triangles counting more.
std::vector<glm::dvec3> FaceNormals(std::span<const Vertex> vertices, const CheckedIndices& indices)
{
    std::vector<glm::dvec3> sums(vertices.size(), glm::dvec3(0));
    for (std::size_t i = 0; i < ShapeCount(indices.Type, indices.Count()); ++i)
    {
        const auto [a, b, c] = CornersOf(indices.Type, i);
        const glm::dvec3 first = Point(vertices[indices[a]]);
        const glm::dvec3 normal =
            glm::cross(Point(vertices[indices[b]]) - first, Point(vertices[indices[c]]) - first);
        for (const std::size_t corner : {a, b, c})
            sums[indices[corner]] += normal;
    }
    return sums;
}

/// Normals of unit length, repaired; empty if that can't be done, or there is nothing to repair.
std::vector<Vector> RepairedNormals(const Geometry& geometry, const CheckedIndices& indices,
                                    const Report& report)
{
    const auto stored = geometry.VertexNormals();
    std::vector<Vector> normals;
    normals.reserve(stored.size());
    std::transform(stored.begin(), stored.end(), std::back_inserter(normals),
                   [](const Vector& normal) { return IsUnit(normal) ? normal : Unit(Direction(normal)); });
    const auto isZero = [](const Vector& normal) { return normal == Vector(); };
    if (std::none_of(normals.begin(), normals.end(), isZero))
    {
        report("normals that aren't of unit length are normalised");
        return normals;
    }
    if (CornerCount(indices.Type) < 3)
    {
        report("normals are skipped, since some have no direction");
        return {};
    }
    report("normals without a direction are computed from the triangles");
    const auto faces = FaceNormals(geometry.Vertices(), indices);
    for (std::size_t i = 0; i < normals.size(); ++i)
    {
        if (isZero(normals[i]))
            normals[i] = Unit(faces[i]);
        if (isZero(normals[i]))
            normals[i] = {0, 0, 1}; // no triangle has both an area and this corner
    }
    return normals;
}

std::optional<Index> AddNormals(const std::shared_ptr<const Geometry>& geometry,
                                const CheckedIndices& indices, Document& document, const Report& report)
{
    const auto stored = geometry->VertexNormals();
    if (stored.size() != geometry->Vertices().size())
        return std::nullopt;
    Accessor accessor = {.Count = stored.size(), .Type = "VEC3"};
    if (std::all_of(stored.begin(), stored.end(), IsUnit))
    {
        document.Views.push_back({std::as_bytes(stored), geometry, 0, kVertices});
        accessor.View = document.Views.size() - 1;
    }
    else
    {
        auto normals = RepairedNormals(*geometry, indices, report);
        if (normals.empty())
            return std::nullopt;
        accessor.View = AddView(document, std::move(normals), kVertices);
    }
    return AddAccessor(document, accessor);
}

Index AddIndices(CheckedIndices indices, Document& document)
{
    Accessor accessor = {.ComponentType = ComponentType::UnsignedShort, .Count = indices.Count()};
    if (indices.Narrow.empty())
    {
        accessor.ComponentType = ComponentType::UnsignedInt;
        accessor.View = AddView(document, std::move(indices.Wide), kIndices);
    }
    else
    {
        accessor.View = AddView(document, std::move(indices.Narrow), kIndices);
    }
    return AddAccessor(document, accessor);
}

} // namespace

std::optional<Primitive> AddGeometry(const std::shared_ptr<const Geometry>& geometry, bool isVFlipped,
                                     Document& document, const Report& report)
{
    const auto vertices = geometry->Vertices();
    const auto mode = ModeOf(geometry->PrimitiveType);
    if (vertices.empty() || geometry->Indices().empty())
        report("a chunk without vertices or indices is skipped");
    else if (!mode)
        report("a chunk of an unknown kind of primitive is skipped");
    if (vertices.empty() || geometry->Indices().empty() || !mode)
        return std::nullopt;
    const auto box = BoxAround(vertices);
    if (!box)
    {
        report("a chunk with infinite or undefined coordinates is skipped");
        return std::nullopt;
    }
    CheckedIndices indices = CheckIndices(*geometry, report);
    if (indices.Count() == 0)
    {
        report("a chunk of which nothing can be drawn is skipped");
        return std::nullopt;
    }
    Primitive primitive;
    primitive.Mode = *ModeOf(indices.Type);
    primitive.Normal = AddNormals(geometry, indices, document, report);
    Index view = 0;
    if (isVFlipped)
    {
        std::vector<Vertex> flipped(vertices.begin(), vertices.end());
        for (Vertex& vertex : flipped)
            vertex.v = 1 - vertex.v;
        view = AddView(document, std::move(flipped), kVertices, sizeof(Vertex));
    }
    else
    {
        document.Views.push_back({std::as_bytes(vertices), geometry, sizeof(Vertex), kVertices});
        view = document.Views.size() - 1;
    }
    const auto& [low, high] = *box;
    primitive.Position = AddAccessor(document, {.View = view,
                                                .Count = vertices.size(),
                                                .Type = "VEC3",
                                                .Min = {low.x, low.y, low.z},
                                                .Max = {high.x, high.y, high.z}});
    primitive.Coordinates = AddAccessor(
        document, {.View = view, .Offset = offsetof(Vertex, u), .Count = vertices.size(), .Type = "VEC2"});
    primitive.Indices = AddIndices(std::move(indices), document);
    return primitive;
}

void AddJoint(Primitive& primitive, std::size_t joint, Document& document)
{
    struct Binding
    {
        std::array<std::uint16_t, 4> Joints;
        std::array<std::uint8_t, 4> Weights;
    };
    static_assert(sizeof(Binding) == 12);
    const std::size_t count = document.Accessors[primitive.Position].Count;
    const Binding binding = {{static_cast<std::uint16_t>(joint)}, {0xFF}};
    const Index view = AddView(document, std::vector<Binding>(count, binding), kVertices, sizeof(Binding));
    primitive.Joints = AddAccessor(
        document,
        {.View = view, .ComponentType = ComponentType::UnsignedShort, .Count = count, .Type = "VEC4"});
    primitive.Weights = AddAccessor(document, {.View = view,
                                               .Offset = offsetof(Binding, Weights),
                                               .ComponentType = ComponentType::UnsignedByte,
                                               .IsNormalized = true,
                                               .Count = count,
                                               .Type = "VEC4"});
}

} // namespace ZLMIM::Export
