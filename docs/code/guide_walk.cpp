#include "names.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <iostream>

namespace
{

using ZLMIM::ToUtf8;

void PrintChunk(const ZLMIM::Chunk& chunk)
{
    const ZLMIM::Material& material = *chunk.Material;
    std::cout << "  chunk " << chunk.Id << ", material \"" << ToUtf8(material.Name) << "\"\n";
    for (const auto& texture : *material.Textures)
        if (texture->TextureType == ZLMIM::txtype::TEX_Diffuse)
            std::cout << "    " << ToUtf8(texture->Name) << '\n';
}

void PrintEntry(const ZLMIM::MeshEntry& entry)
{
    std::cout << ToUtf8(entry.Name) << ": " << entry.Mesh->VertexCount << " vertices\n";
    if (!entry.Mesh->Chunks)
        return; // nothing of the mesh was read
    for (const auto& chunk : *entry.Mesh->Chunks)
        PrintChunk(*chunk);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const auto asset = ZLMIM::Guide::LoadAsset(argv[1]);
    std::cout << ToUtf8(asset->kuid()) << ' ' << ToUtf8(asset->UserName) << '\n';
    const auto table = asset->MeshTable();
    for (const auto& entry : *table)
        PrintEntry(*entry);
}
