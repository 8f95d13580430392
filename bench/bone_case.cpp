#include "bench/cases.h"
#include "bench/made_mesh.h"
#include "tests/good_files.h"
#include "zlmim/mesh/bone_finder.h"
#include "zlmim/mesh/mesh.h"

#include <memory>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

namespace Bench
{

using ZLMIM::Bone;
using ZLMIM::Testing::Bytes;
using ZLMIM::Testing::MeshBone;
using ZLMIM::Testing::MeshSkeleton;

Measures BoneNames(const TempFolder&)
{
    constexpr int kBones = 1'000;
    constexpr int kWidth = 9; // a root, its children, and their children
    MeshPlan plan{.chunks = kBones};
    Bytes branches;
    int made = 1;
    const auto next = [&] { return plan.bones.emplace_back("b.r.part" + std::to_string(made++)); };
    int branchCount = 0;
    while (made < kBones)
    {
        const std::string branch = next();
        Bytes leaves;
        int leafCount = 0;
        while (leafCount < kWidth && made < kBones)
        {
            leaves.Append(MeshBone(next()));
            ++leafCount;
        }
        branches.Append(MeshBone(branch, leafCount, leaves));
        ++branchCount;
    }
    plan.bones.emplace_back("b.r.root");
    plan.skeleton = MeshSkeleton(MeshBone("b.r.root", branchCount, branches));

    const auto mesh = std::make_shared<ZLMIM::Mesh>();
    const MadeMesh file = MakeMesh(plan);
    if (!mesh->LoadBytes(std::as_bytes(std::span(file.file))))
        throw std::runtime_error("the made-up skeleton doesn't load");
    const auto isFound = [](const ZLMIM::Chunk& chunk, const Bone* bone)
    {
        if (!bone || bone != chunk.Geometry->BoneObject.get())
            throw std::runtime_error("another bone than the mesh's own was found");
    };

    const auto library = [mesh, isFound]
    {
        return Timed(
            [&]
            {
                ZLMIM::BoneFinder finder(mesh->RootBone);
                for (const auto& chunk : mesh->Chunks->Entries())
                    isFound(*chunk, finder.FindBone(chunk->Geometry->Bone).get());
            });
    };
    // Built before the timing starts, from the chunks: the bone of each name is already known.
    std::unordered_map<std::u16string_view, const Bone*> byName;
    for (const auto& chunk : mesh->Chunks->Entries())
        byName.try_emplace(chunk->Geometry->Bone, chunk->Geometry->BoneObject.get());
    const auto floor = [mesh, isFound, byName]
    {
        return Timed(
            [&]
            {
                for (const auto& chunk : mesh->Chunks->Entries())
                    isFound(*chunk, byName.at(chunk->Geometry->Bone));
            });
    };
    return {{{"the bones of 1,000 chunks among 1,000", library, floor, 2.8}}};
}

} // namespace Bench
