#include "scene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>

namespace ZLMIM::Picture
{
namespace
{

/// Column i of a `glm::mat4` is what row i of a `Matrix` is.
glm::mat4 ToMat4(const Matrix& m)
{
    return {m.m11, m.m12, m.m13, 0, m.m21, m.m22, m.m23, 0, m.m31, m.m32, m.m33, 0, m.m41, m.m42, m.m43, 1};
}

/// Component of a colour that may be any number, or none.
float Clamped(float component) { return component > 0 ? std::min(component, 1.0F) : 0; }

bool IsOfTriangles(PrimFlag type)
{
    return type == PrimFlag::TRIANGLES || type == PrimFlag::TRI_STRIP || type == PrimFlag::TRI_FAN;
}

std::size_t TriangleCount(PrimFlag type, std::size_t indexCount)
{
    if (type == PrimFlag::TRIANGLES)
        return indexCount / 3;
    return indexCount < 3 ? 0 : indexCount - 2;
}

/// Places of a triangle's corners in the run of indices. Every other triangle of a strip runs the other way
/// round, so its first two corners change places.
std::array<std::size_t, 3> CornersOf(PrimFlag type, std::size_t triangle)
{
    if (type == PrimFlag::TRIANGLES)
        return {3 * triangle, 3 * triangle + 1, 3 * triangle + 2};
    if (type == PrimFlag::TRI_FAN)
        return {0, triangle + 1, triangle + 2};
    const std::size_t odd = triangle % 2;
    return {triangle + odd, triangle + 1 - odd, triangle + 2};
}

std::optional<glm::vec3> Place(std::span<const Vertex> vertices, std::int32_t index, const glm::mat4& place)
{
    if (index < 0 || static_cast<std::size_t>(index) >= vertices.size())
        return std::nullopt;
    const Vertex& vertex = vertices[static_cast<std::size_t>(index)];
    const glm::vec3 point = place * glm::vec4(vertex.x, vertex.y, vertex.z, 1);
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
        return std::nullopt;
    return point;
}

bool HasSurface(const std::array<glm::vec3, 3>& corners)
{
    const glm::dvec3 first = corners[0];
    return glm::cross(glm::dvec3(corners[1]) - first, glm::dvec3(corners[2]) - first) != glm::dvec3(0);
}

struct PlacedMesh
{
    std::shared_ptr<const Mesh> Object;
    glm::mat4 Place;
};

class SceneMaker
{
public:
    void Add(const Mesh& mesh, const glm::mat4& place)
    {
        if (!mesh.Chunks || !mesh.ErrorMessage.empty())
            ++mScene.LeftOut["meshes that didn't load"];
        if (!mesh.Chunks)
            return;
        for (const auto& chunk : mesh.Chunks->Entries())
            if (chunk && chunk->Geometry && chunk->Material)
                Add(*chunk, place);
    }

    /// Adds the entries of a mesh table, and answers where their meshes are.
    std::vector<PlacedMesh> Add(const Collection<MeshEntry>& table, const glm::mat4& origin)
    {
        std::vector<PlacedMesh> meshes;
        std::unordered_map<const MeshEntry*, glm::mat4> places;
        for (const auto& entry : table)
        {
            if (!entry || !entry->Mesh)
                continue;
            glm::mat4 place = origin;
            if (entry->Att)
            {
                // An entry hangs on one above it, or on itself.
                const auto parent = places.find(entry->AttParent().get());
                if (parent == places.end())
                {
                    ++mScene.LeftOut["entries that hang on themselves"];
                    continue;
                }
                place = parent->second * ToMat4(entry->Att->Matrix);
            }
            places.emplace(entry.get(), place);
            meshes.push_back({entry->Mesh, place});
            Add(*entry->Mesh, place);
        }
        return meshes;
    }

    /// Adds what the model refers to, on the attachment points of its meshes.
    void AddReferences(const ZLMModel& model, const std::vector<PlacedMesh>& meshes)
    {
        std::unordered_map<std::u16string, glm::mat4> points;
        for (const auto& [mesh, place] : meshes)
            if (mesh->Attachments)
                for (const auto& attachment : mesh->Attachments->Entries())
                    if (attachment)
                        points.emplace(attachment->Name, place * ToMat4(attachment->Matrix));

        std::vector<std::pair<std::u16string, std::shared_ptr<ZLMModel>>> references;
        if (model.Bogies && model.BogieNames)
            for (std::int32_t i = 1; i <= std::min(model.Bogies->Count(), model.BogieNames->Count()); ++i)
                references.emplace_back(model.BogieNames->Item(i), model.Bogies->Item(i));
        if (model.Pantograph)
            references.emplace_back(u"pantograph", model.Pantograph);

        std::size_t seen = 0;
        for (auto& [key, reference] : references)
        {
            std::erase(key, u'-');
            const auto point = points.find(u"a." + key);
            const auto table = reference ? reference->MeshTable() : nullptr;
            if (point == points.end() || !table || table->Count() == 0 || ++seen > kMaxReferences)
                ++mScene.LeftOut["bogeys and pantographs without a place or a mesh"];
            else
                static_cast<void>(Add(*table, point->second)); // what they refer to themselves is left out
        }
    }

    Scene Take() { return std::move(mScene); }

private:
    void Add(const Chunk& chunk, const glm::mat4& place)
    {
        const Geometry& geometry = *chunk.Geometry;
        const PrimFlag type = geometry.PrimitiveType;
        const auto indices = geometry.Indices();
        if (!IsOfTriangles(type))
        {
            if (!indices.empty())
                ++mScene.LeftOut["chunks of anything but triangles"];
            return;
        }
        const rgbColour& diffuse = chunk.Material->Diffuse;
        const glm::vec3 colour = {Clamped(diffuse.r), Clamped(diffuse.g), Clamped(diffuse.b)};
        const std::size_t count = TriangleCount(type, indices.size());
        const std::size_t few = std::min(count, mTrianglesLeft);
        mTrianglesLeft -= few;
        LeaveOut("triangles, for their number", count - few);
        std::size_t broken = 0;
        for (std::size_t i = 0; i < few; ++i)
        {
            const auto [a, b, c] = CornersOf(type, i);
            const auto first = Place(geometry.Vertices(), indices[a], place);
            const auto second = Place(geometry.Vertices(), indices[b], place);
            const auto third = Place(geometry.Vertices(), indices[c], place);
            if (!first || !second || !third)
                ++broken;
            else if (const std::array corners = {*first, *second, *third}; HasSurface(corners))
                mScene.Triangles.push_back({corners, colour});
        }
        LeaveOut("triangles with a corner that is nowhere", broken);
    }

    void LeaveOut(const char* what, std::size_t count)
    {
        if (count > 0)
            mScene.LeftOut[what] += count;
    }

    Scene mScene;
    std::size_t mTrianglesLeft = kMaxTriangles;
};

constexpr glm::mat4 kOrigin(1);

} // namespace

Scene MakeScene(const Mesh& mesh)
{
    SceneMaker maker;
    maker.Add(mesh, kOrigin);
    return maker.Take();
}

Scene MakeScene(const ZLMModel& model)
{
    SceneMaker maker;
    if (const auto table = model.MeshTable())
        maker.AddReferences(model, maker.Add(*table, kOrigin));
    return maker.Take();
}

} // namespace ZLMIM::Picture
