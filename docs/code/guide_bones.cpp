#include "names.h"
#include "poses.h"
#include "transforms.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <iostream>

namespace
{

using namespace ZLMIM::Guide;

/// Prints where the first vertex of each chunk is after some seconds.
void PrintChunks(const std::shared_ptr<ZLMIM::MeshEntry>& entry, float seconds)
{
    const ZLMIM::Anim& anim = *entry->anim;
    const float slot = seconds * static_cast<float>(anim.FPS); // in a file that numbers frames from 0
    const ZLMIM::Matrix place = EntryTransform(entry);
    for (const auto& chunk : *entry->Mesh->Chunks)
    {
        const auto bone = chunk->Geometry->BoneObject;
        const ZLMIM::Matrix motion = bone ? ChunkMotion(bone, anim, slot) : kIdentity;
        const ZLMIM::Matrix transform = Multiply(motion, place);
        const ZLMIM::Vertex& vertex = chunk->Geometry->Vertices()[0];
        const auto [x, y, z] = Transform({vertex.x, vertex.y, vertex.z}, transform);
        std::cout << "  chunk " << chunk->Id << ": " << x << ' ' << y << ' ' << z << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const auto asset = LoadAsset(argv[1]);
    const auto entry = asset->MeshTable()->Item(1);
    std::cout << entry->anim->FrameCount << " frames, " << entry->anim->FPS << " per second\n";
    for (const float seconds : {0.0F, 0.25F, 0.4F})
    {
        std::cout << "after " << seconds << " seconds\n";
        PrintChunks(entry, seconds);
    }
}
