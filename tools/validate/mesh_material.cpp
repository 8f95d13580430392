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

bool IsNegative(const rgbColour& colour) { return std::min({colour.r, colour.g, colour.b}) < 0; }

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
    Tally bad;
    for (std::int32_t number = 1; const auto& texture : material.Textures->Entries())
    {
        if (!AreFinite(texture->Amount))
            bad.Note(number);
        ++number;
    }
    if (bad.Count() > 0)
        report.Add(Code::NotFinite, ChunkPlace(chunk, "texture " + std::to_string(bad.First())),
                   "the amount is infinite or NaN" + bad.AndMore());
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
                       "no file called " + Quoted(texture) + ", with any ending, beside the mesh" +
                           count.AndMore());
        for (const NativePath& file : files)
        {
            const std::string damage = Tools::PictureDamage(file);
            if (!damage.empty())
                report.Add(Code::TextureDamaged, place,
                           "the file " + Quoted(Tools::ShownName(file)) + " " + damage + count.AndMore());
        }
    }
}

} // namespace ZLMIM::Validate
