#include "scene.h"

#include "tools/common/assembly.h"
#include "tools/common/asset.h"
#include "tools/common/paths.h"
#include "tools/common/text.h"
#include "tools/common/texture_files.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <utility>

namespace ZLMIM::Picture
{
namespace
{

/// Materials above this version have an opacity.
constexpr std::int32_t kLastShortMaterial = 101;

/// In chunks of more vertices, indices are taken as unsigned 16-bit numbers.
constexpr std::size_t kMostSignedVertices = 32'768;

constexpr glm::mat4 kOrigin(1);

/// A colour's component may be any number, or NaN.
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

/// Positions of a triangle's corners in the array of indices. Every other triangle of a strip has the
/// opposite winding, so its first two corners are swapped.
std::array<std::size_t, 3> CornersOf(PrimFlag type, std::size_t triangle)
{
    if (type == PrimFlag::TRIANGLES)
        return {3 * triangle, 3 * triangle + 1, 3 * triangle + 2};
    if (type == PrimFlag::TRI_FAN)
        return {0, triangle + 1, triangle + 2};
    const std::size_t odd = triangle % 2;
    return {triangle + odd, triangle + 1 - odd, triangle + 2};
}

/// The vertex of an index; null if there is none.
const Vertex* VertexAt(std::span<const Vertex> vertices, std::int32_t index)
{
    if (index < 0 && index >= -32'768 && vertices.size() > kMostSignedVertices)
        index &= 0xFFFF;
    return index >= 0 && static_cast<std::size_t>(index) < vertices.size()
               ? &vertices[static_cast<std::size_t>(index)]
               : nullptr;
}

/// The position of a vertex, if it is finite.
std::optional<glm::vec3> PlaceOf(const Vertex* vertex, const glm::mat4& place)
{
    if (!vertex)
        return std::nullopt;
    const glm::vec3 point = place * glm::vec4(vertex->x, vertex->y, vertex->z, 1);
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
        return std::nullopt;
    return point;
}

bool HasArea(const std::array<glm::vec3, 3>& corners)
{
    const glm::dvec3 first = corners[0];
    return glm::cross(glm::dvec3(corners[1]) - first, glm::dvec3(corners[2]) - first) != glm::dvec3(0);
}

} // namespace

Scene SceneMaker::Make(const Mesh& mesh)
{
    Add(mesh, nullptr, kOrigin);
    return std::move(mScene);
}

Scene SceneMaker::Make(const ZLMModel& model)
{
    const Tools::Assembly assembly =
        Tools::Assemble(model, mRequest.Only.empty() ? Tools::References::Follow : Tools::References::Skip);
    mScene.Problems = assembly.Problems;
    mScene.Notes = assembly.Notes;
    std::vector<glm::mat4> places;
    for (const Tools::Part& part : assembly.Parts)
    {
        glm::mat4 place = part.Parent ? places[*part.Parent] : kOrigin;
        if (part.Point)
            place *= Tools::ToMat4(part.Point->Matrix);
        places.push_back(place);
        if (part.Entry && (part.Reference || mRequest.Shows(part.Entry->Name)))
            Add(*part.Entry->Mesh, part.Entry->anim.get(), place);
    }
    return std::move(mScene);
}

void SceneMaker::Add(const Mesh& mesh, const Anim* anim, const glm::mat4& place)
{
    if (!mesh.Chunks)
        return;
    std::optional<Tools::Poses> poses;
    if (anim && anim->RootBone && mesh.RootBone)
    {
        const Tools::Run run = Tools::RunOf(*anim);
        const bool isLonger = !mScene.AnimationRun || run.Last > mScene.AnimationRun->Last;
        if (!run.IsEmpty() && isLonger)
        {
            mScene.AnimationRun = run;
            mScene.FramesPerSecond = anim->FPS;
        }
        if (mRequest.Slot && !run.IsEmpty())
            poses.emplace(*anim, mRequest.Poses);
    }
    std::unordered_map<const Bone*, glm::mat4> motions;
    for (const auto& chunk : mesh.Chunks->Entries())
    {
        if (!chunk || !chunk->Geometry || !chunk->Material)
            continue;
        glm::mat4 chunkPlace = place;
        if (const Bone* const bone = chunk->Geometry->BoneObject.get(); poses && bone)
        {
            const auto [motion, isNew] = motions.try_emplace(bone);
            if (isNew)
                motion->second = poses->Motion(*bone, *mRequest.Slot);
            chunkPlace = place * motion->second;
        }
        Add(*chunk, mesh, chunkPlace);
    }
    for (const auto& [many, counted] : mCounts)
        AddLine(mScene.Problems, mesh.FileName,
                Tools::Counted(static_cast<std::int64_t>(counted.second), counted.first, many));
    mCounts.clear();
}

void SceneMaker::Add(const Chunk& chunk, const Mesh& mesh, const glm::mat4& place)
{
    const Geometry& geometry = *chunk.Geometry;
    if (geometry.Indices().empty())
        return;
    Surface surface = SurfaceOf(*chunk.Material, mesh);
    if (surface.Opacity <= 0)
    {
        AddLine(mScene.Notes, mesh.FileName, "a chunk with an opacity of 0 can't be seen");
        return;
    }
    mScene.Surfaces.push_back(std::move(surface));
    if (IsOfTriangles(geometry.PrimitiveType))
        AddTriangles(geometry, place);
    else
        AddLines(geometry, place);
}

void SceneMaker::AddTriangles(const Geometry& geometry, const glm::mat4& place)
{
    const auto indices = geometry.Indices();
    const auto vertices = geometry.Vertices();
    const std::size_t count = Admit(TriangleCount(geometry.PrimitiveType, indices.size()));
    std::size_t withoutVertex = 0;
    std::size_t infinite = 0;
    for (std::size_t i = 0; i < count; ++i)
    {
        Triangle triangle = {{}, {}, mScene.Surfaces.size() - 1};
        const auto corners = CornersOf(geometry.PrimitiveType, i);
        bool isWhole = true;
        for (std::size_t c = 0; c < 3 && isWhole; ++c)
        {
            const Vertex* const vertex = VertexAt(vertices, indices[corners[c]]);
            const auto point = PlaceOf(vertex, place);
            isWhole = point.has_value();
            if (isWhole)
            {
                triangle.Corners[c] = *point;
                triangle.Coordinates[c] = {vertex->u, vertex->v};
            }
            else
            {
                ++(vertex ? infinite : withoutVertex);
            }
        }
        if (isWhole && HasArea(triangle.Corners))
            mScene.Triangles.push_back(triangle);
    }
    AddProblem("triangle is skipped: an index is of no vertex of the chunk",
               "triangles are skipped: indices are of no vertex of the chunk", withoutVertex);
    AddProblem("triangle is skipped: a corner has infinite or undefined coordinates",
               "triangles are skipped: corners have infinite or undefined coordinates", infinite);
}

void SceneMaker::AddLines(const Geometry& geometry, const glm::mat4& place)
{
    const PrimFlag type = geometry.PrimitiveType;
    const auto indices = geometry.Indices();
    const bool isPoints = type == PrimFlag::POINTS;
    if (!isPoints && type != PrimFlag::LINES && type != PrimFlag::LINE_STRIP)
    {
        AddProblem("chunk of an unknown kind of primitive is skipped",
                   "chunks of an unknown kind of primitive are skipped");
        return;
    }
    const std::size_t step = type == PrimFlag::LINES ? 2 : 1;
    const std::size_t second = isPoints ? 0 : 1;
    const std::size_t count = Admit(isPoints                  ? indices.size()
                                    : type == PrimFlag::LINES ? indices.size() / 2
                                                              : indices.size() - 1);
    std::size_t withoutVertex = 0;
    std::size_t infinite = 0;
    for (std::size_t i = 0; i < count; ++i)
    {
        const Vertex* const first = VertexAt(geometry.Vertices(), indices[i * step]);
        const Vertex* const last = VertexAt(geometry.Vertices(), indices[i * step + second]);
        const auto a = PlaceOf(first, place);
        const auto b = PlaceOf(last, place);
        if (a && b)
            mScene.Lines.push_back({{*a, *b}, mScene.Surfaces.size() - 1});
        else
            ++(first && last ? infinite : withoutVertex);
    }
    AddProblem("line or point is skipped: an index is of no vertex of the chunk",
               "lines or points are skipped: indices are of no vertex of the chunk", withoutVertex);
    AddProblem("line or point is skipped: it has infinite or undefined coordinates",
               "lines or points are skipped: they have infinite or undefined coordinates", infinite);
}

Surface SceneMaker::SurfaceOf(const Material& material, const Mesh& mesh)
{
    const rgbColour& diffuse = material.Diffuse;
    Surface surface;
    surface.Colour = {Clamped(diffuse.r), Clamped(diffuse.g), Clamped(diffuse.b)};
    // Short materials have no opacity, and are opaque.
    surface.Opacity = material.Version > kLastShortMaterial ? Clamped(material.Opacity) : 1;
    if (mRequest.HasTextures)
    {
        surface.Diffuse = FindTexture(material, txtype::TEX_Diffuse, mesh);
        surface.Transparency = FindTexture(material, txtype::TEX_Opacity, mesh);
    }
    return surface;
}

std::shared_ptr<const Texture> SceneMaker::FindTexture(const Material& material, txtype type,
                                                       const Mesh& mesh)
{
    if (!material.Textures)
        return nullptr;
    const auto textures = material.Textures->Entries();
    const auto found =
        std::find_if(textures.begin(), textures.end(),
                     [type](const auto& texture) { return texture && texture->TextureType == type; });
    if (found == textures.end())
        return nullptr;
    const auto meshFile = mNames.Find(mesh.FileName, FoundFile::Kind::File);
    if (!meshFile)
        return nullptr;
    const NativePath folder =
        meshFile->nativePath.substr(0, meshFile->nativePath.rfind(kNativeSeparator) + 1);
    std::string why = "there is no picture for it beside the mesh";
    bool isFirst = true;
    for (const NativePath& file : Tools::TextureFiles(folder, (*found)->Name, mNames))
    {
        const auto [cached, isNew] = mTextures.try_emplace(file);
        if (isNew)
            if (auto texture = ReadTexture(file))
                cached->second = std::make_shared<const Texture>(std::move(*texture));
        if (cached->second)
            return cached->second;
        const std::string damage = Tools::PictureDamage(file);
        if (std::exchange(isFirst, false))
            why = Tools::Printable(Tools::ShownName(file)) + " " +
                  (damage.empty() ? "isn't a picture that can be read" : damage);
    }
    AddLine(mScene.Problems, mesh.FileName,
            "texture " + Tools::Quoted((*found)->Name) + ": " + why + ", so it is drawn without");
    return nullptr;
}

void SceneMaker::AddProblem(const char* one, const char* many, std::size_t count)
{
    if (count == 0)
        return;
    auto& counted = mCounts[many];
    counted.first = one;
    counted.second += count;
}

void SceneMaker::AddLine(std::vector<std::string>& lines, const std::u16string& file, const std::string& what)
{
    std::string line = (file.empty() ? "" : Tools::ShownFile(file) + ": ") + what;
    if (std::find(lines.begin(), lines.end(), line) == lines.end())
        lines.push_back(std::move(line));
}

/// How many of `count` further triangles or lines the limit allows.
std::size_t SceneMaker::Admit(std::size_t count)
{
    const std::size_t room =
        kMaxTriangles - std::min(kMaxTriangles, mScene.Triangles.size() + mScene.Lines.size());
    const std::size_t admitted = std::min(count, room);
    AddProblem("triangle or line is skipped, since there are too many",
               "triangles or lines are skipped, since there are too many", count - admitted);
    return admitted;
}

} // namespace ZLMIM::Picture
