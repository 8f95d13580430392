#include "mesh_material.h"

#include "finite.h"
#include "spelling.h"
#include "tally.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"
#include "tools/common/texture_files.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

/// Materials above this version have the long form, with an opacity.
constexpr std::int32_t kLastShortMaterial = 101;

/// Colours are 0 to 1, but glows may be somewhat brighter. Those of 0 to 255 are far above.
constexpr float kMostColour = 10;

bool IsNegative(const rgbColour& colour) { return std::min({colour.r, colour.g, colour.b}) < 0; }
bool IsTooBright(const rgbColour& colour) { return std::max({colour.r, colour.g, colour.b}) > kMostColour; }

/// Whether a chunk shows a picture, but all its vertices have the same place in it, the first corner.
bool IsUnplaced(const Chunk& chunk)
{
    constexpr std::size_t kTriangle = 3;
    const auto textures = chunk.Material->Textures->Entries();
    const auto vertices = chunk.Geometry->Vertices();
    const PrimFlag kind = chunk.Geometry->PrimitiveType;
    const bool hasFaces =
        kind == PrimFlag::TRIANGLES || kind == PrimFlag::TRI_STRIP || kind == PrimFlag::TRI_FAN;
    return hasFaces && vertices.size() >= kTriangle &&
           std::any_of(textures.begin(), textures.end(),
                       [](const auto& texture) { return texture->TextureType == txtype::TEX_Diffuse; }) &&
           std::all_of(vertices.begin(), vertices.end(),
                       [](const Vertex& vertex) { return vertex.u == 0 && vertex.v == 0; });
}

/// Checks the roles and amounts of a material's textures.
void CheckTextures(const Material& material, std::int32_t chunk, Report& report)
{
    Tally bad;
    Tally roles;
    Tally negative;
    std::string role;
    for (std::int32_t number = 1; const auto& texture : material.Textures->Entries())
    {
        if (!AreFinite(texture->Amount))
            bad.Note(number);
        // A bump map with a negative amount swaps heights and depths.
        else if (texture->Amount < 0 && texture->TextureType != txtype::TEX_Bump &&
                 texture->TextureType != txtype::TEX_Displacement)
            negative.Note(number);
        if (texture->TextureType < txtype::TEX_Ambient || texture->TextureType >= txtype::TEX_NumtypeS)
        {
            if (roles.Count() == 0)
                role = std::to_string(static_cast<std::int32_t>(texture->TextureType));
            roles.Note(number);
        }
        ++number;
    }
    const auto add = [&](Code code, const Tally& tally, const std::string& message)
    {
        if (tally.Count() > 0)
            report.Add(code, ChunkPlace(chunk, "texture " + std::to_string(tally.First())),
                       message + tally.AndMore());
    };
    add(Code::NotFinite, bad, "the amount is infinite or NaN");
    add(Code::MaterialRange, negative, "the amount is negative");
    add(Code::MaterialRange, roles, role + " is no role of a texture, which are 0 to 11");
}

void CheckNumbers(const Material& material, std::int32_t chunk, Report& report)
{
    const bool isFinite = AreFinite(material.Ambient) && AreFinite(material.Diffuse) &&
                          AreFinite(material.Specular) && AreFinite(material.Emissive) &&
                          AreFinite(material.Opacity);
    if (!isFinite)
        report.Add(Code::NotFinite, ChunkPlace(chunk, "material"),
                   "a colour or the opacity is infinite or NaN");
    if (material.Version > kLastShortMaterial && (material.Opacity < 0 || material.Opacity > 1))
        report.Add(Code::MaterialRange, ChunkPlace(chunk, "material"),
                   "an opacity of " + Tools::Decimal(material.Opacity) + ", which isn't in 0 to 1");
    if (IsNegative(material.Ambient) || IsNegative(material.Diffuse) || IsNegative(material.Specular) ||
        IsNegative(material.Emissive))
        report.Add(Code::MaterialRange, ChunkPlace(chunk, "material"), "a colour is negative");
    if (IsTooBright(material.Ambient) || IsTooBright(material.Diffuse) || IsTooBright(material.Specular) ||
        IsTooBright(material.Emissive))
        report.Add(Code::MaterialRange, ChunkPlace(chunk, "material"),
                   "a colour is far above 1, which is the brightest");
    CheckTextures(material, chunk, report);
}

} // namespace

Place ChunkPlace(std::int32_t number, std::string detail) { return {0, {}, number, std::move(detail)}; }

void CheckMaterials(const Mesh& mesh, const NativePath& folder, PathResolver& names, Report& report)
{
    struct Use
    {
        std::u16string Texture;
        Validate::Place Place;
        Tally Count;
    };
    std::vector<Use> uses;
    std::map<std::u16string_view, std::size_t> useOf;
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
    {
        const Material& material = *chunk->Material;
        if (material.Version == 0 && material.Textures->Count() == 0)
            report.Add(Code::MaterialMissing, ChunkPlace(number), "it has no MATL block");
        CheckNumbers(material, number, report);
        if (IsUnplaced(*chunk))
            report.Add(Code::TextureUnplaced, ChunkPlace(number),
                       "all its texture coordinates are 0, so its texture shows as one colour");
        for (std::int32_t texture = 1; const auto& entry : material.Textures->Entries())
        {
            const auto [use, isNew] = useOf.try_emplace(entry->Name, uses.size());
            if (isNew)
                uses.push_back({entry->Name, ChunkPlace(number, "texture " + std::to_string(texture)), {}});
            uses[use->second].Count.Note(texture++);
        }
        ++number;
    }
    for (const auto& [texture, place, count] : uses)
    {
        if (texture.empty())
        {
            report.Add(Code::TextureMissing, place, "it has no name" + count.AndMore());
            continue;
        }
        const auto files = Tools::TextureFiles(folder, texture, names);
        if (files.empty())
            report.Add(Code::TextureMissing, place,
                       "no file called " + Quoted(texture) +
                           ", with the ending of any picture, beside the mesh" + count.AndMore());
        std::string damage;
        for (const NativePath& file : files)
        {
            const std::string damageOfFile = Tools::PictureDamage(file);
            if (damageOfFile.empty())
            {
                // One good file is enough.
                damage.clear();
                break;
            }
            if (damage.empty())
                damage = "the file " + Quoted(Tools::ShownName(file)) + " " + damageOfFile;
        }
        if (!damage.empty())
            report.Add(Code::TextureDamaged, place, damage + count.AndMore());
    }
}

} // namespace ZLMIM::Validate
