#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <iostream>
#include <memory>

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
    std::cout << ToUtf8(entry.Name) << ": " << ToUtf8(entry.Mesh->FileName) << '\n';
    if (!entry.Mesh->Chunks)
        return; // nothing of the mesh was read
    for (const auto& chunk : *entry.Mesh->Chunks)
        PrintChunk(*chunk);
}

} // namespace

int main()
{
    const auto asset = std::make_shared<ZLMIM::ZLMModel>();
    asset->Load(u"..\\wagon\\config.txt");
    std::cout << ToUtf8(asset->kuid()) << ' ' << ToUtf8(asset->UserName) << '\n';
    for (const auto& entry : *asset->MeshTable())
        PrintEntry(*entry);
}
