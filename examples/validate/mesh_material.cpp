#include "mesh_material.h"

#include "words.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>
#include <string_view>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

/// What a file beside the mesh must have before its ending, in lower case.
std::u16string Stem(std::u16string_view texture) { return LowerCase(texture.substr(0, texture.rfind(u'.'))); }

/// Whether a file in the folder is called like that, with any ending or none. A mesh or an animation is no
/// texture.
bool HasFile(std::span<const FolderEntry> entries, const std::u16string& stem)
{
    const auto first = std::lower_bound(entries.begin(), entries.end(), stem,
                                        [](const FolderEntry& entry, const std::u16string& wanted)
                                        { return entry.lowerName < wanted; });
    for (auto entry = first; entry != entries.end() && entry->lowerName.starts_with(stem); ++entry)
    {
        const auto ending = std::u16string_view(entry->lowerName).substr(stem.size());
        const bool isAlike = ending.empty() || ending.front() == u'.';
        if (isAlike && !entry->isFolder && ending != u".im" && ending != u".kin")
            return true;
    }
    return false;
}

void JudgeNumbers(const Material& material, const std::string& chunk, Report& report)
{
    const bool isFinite = AreFinite(material.Ambient) && AreFinite(material.Diffuse) &&
                          AreFinite(material.Specular) && AreFinite(material.Emissive) &&
                          AreFinite(material.Opacity);
    if (!isFinite)
        report.Add(Code::NotFinite, chunk + ", material", "a colour or the opacity is infinite or NaN");
    Tally bad;
    for (std::int32_t number = 1; const auto& texture : material.Textures->Entries())
    {
        if (!AreFinite(texture->Amount))
            bad.Note(number);
        ++number;
    }
    if (bad.Count() > 0)
        report.Add(Code::NotFinite, chunk + ", texture " + std::to_string(bad.First()),
                   "the amount is infinite or NaN" + bad.AndMore());
}

} // namespace

std::string ChunkPlace(std::int32_t number) { return "chunk " + std::to_string(number); }

void JudgeMaterials(const Mesh& mesh, const NativePath& folder, PathResolver& names, Report& report)
{
    struct Use
    {
        std::u16string Texture;
        std::string Place;
        Tally Count;
    };
    std::vector<Use> uses;
    std::map<std::u16string_view, std::size_t> useOf;
    for (std::int32_t number = 1; const auto& chunk : mesh.Chunks->Entries())
    {
        const std::string place = ChunkPlace(number++);
        JudgeNumbers(*chunk->Material, place, report);
        for (std::int32_t texture = 1; const auto& entry : chunk->Material->Textures->Entries())
        {
            const auto [use, isNew] = useOf.try_emplace(entry->Name, uses.size());
            if (isNew)
                uses.push_back({entry->Name, place + ", texture " + std::to_string(texture), {}});
            uses[use->second].Count.Note(texture++);
        }
    }
    if (uses.empty())
        return;
    const auto entries = names.List(folder);
    for (const auto& [texture, place, count] : uses)
    {
        if (texture.empty())
            report.Add(Code::TextureMissing, place, "it has no name" + count.AndMore());
        else if (!HasFile(entries, Stem(texture)))
            report.Add(Code::TextureMissing, place,
                       "no file called " + Quoted(texture) + ", with any ending, beside the mesh" +
                           count.AndMore());
    }
}

} // namespace ZLMIM::Validate
