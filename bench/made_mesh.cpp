#include "bench/made_mesh.h"

#include "zlmim/model/records.h"

#include <algorithm>
#include <array>

namespace Bench
{

using ZLMIM::Matrix;
using ZLMIM::Vector;
using ZLMIM::Vertex;
using ZLMIM::Testing::Bytes;
using ZLMIM::Testing::MeshHeader;

namespace
{

Bytes Material(std::int32_t textures)
{
    Bytes material;
    material.Long(104).String("steel.m.gloss").Long(0).Long(0).Single(1).Zeros(48).Long(20).Long(textures);
    for (std::int32_t i = 0; i < textures; ++i)
        material.Long(1).String("steel_" + std::to_string(i) + ".texture").Single(1);
    return Bytes().Block("MATL", material);
}

/// A GEOM block up to its runs.
Bytes GeometryHead(std::int32_t vertices, const std::string& bone)
{
    return Bytes()
        .Long(201)
        .Long(4)
        .Long(0)
        .Single(0)
        .Record(std::array<std::int32_t, 5>{vertices, vertices, 3 * vertices, vertices, 0})
        .String(bone);
}

Bytes Runs(std::int32_t vertices)
{
    Bytes runs;
    for (std::int32_t i = 0; i < vertices; ++i)
        runs.Record(Vertex{static_cast<float>(i), 1, 2, 0.25F, 0.75F});
    for (std::int32_t i = 0; i < 3 * vertices; ++i)
        runs.Short(i % std::min(vertices, 32'000));
    for (std::int32_t i = 0; i < 2 * vertices; ++i)
        runs.Record(Vector{0, 0, i % 2 == 0 ? 1.0F : -1.0F});
    return runs;
}

} // namespace

MadeMesh MakeMesh(const MeshPlan& plan)
{
    MadeMesh made;
    Bytes file = MeshHeader(plan.chunks);
    const Bytes runs = Runs(plan.vertices);
    const auto vertices = static_cast<std::size_t>(plan.vertices);
    for (std::int32_t i = 0; i < plan.chunks; ++i)
    {
        const auto number = static_cast<std::size_t>(i);
        const std::string bone = plan.bones.empty() ? "" : plan.bones[number % plan.bones.size()];
        const Bytes geometry = GeometryHead(plan.vertices, bone).Append(runs);
        file.Block("CHNK", Bytes().Long(100).Long(i).Append(Material(plan.textures)).Block("GEOM", geometry));
        std::size_t offset = file.Size() - runs.Size();
        for (const FileRun& run : {FileRun{0, vertices * sizeof(Vertex)},
                                   {0, 3 * vertices * 2, true},
                                   {0, vertices * sizeof(Vector)},
                                   {0, vertices * sizeof(Vector)}})
        {
            made.runs.push_back({offset, run.bytes, run.isWidened});
            offset += run.bytes;
        }
    }
    if (plan.attachments > 0)
    {
        Bytes attachments = Bytes().Long(100).Long(plan.attachments);
        for (std::int32_t i = 0; i < plan.attachments; ++i)
            attachments.String("a.Point" + std::to_string(i)).Record(Matrix{});
        file.Block("ATCH", attachments);
    }
    file.Append(plan.skeleton);
    made.file = file.Str();
    return made;
}

} // namespace Bench
