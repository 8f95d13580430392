#ifndef ZLMIM_TESTS_MADE_ASSETS_H
#define ZLMIM_TESTS_MADE_ASSETS_H

#include "block_writer.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/enumerations.h"

#include <exception>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ZLMIM::Testing
{

/// The contents of a chunk.
struct ChunkPlan
{
    PrimFlag kind = PrimFlag::TRIANGLES;
    std::int32_t primitives = 0;
    std::vector<Vertex> vertices = {};
    std::vector<int> indices = {};
    std::vector<Vector> normals = {}; // missing ones are (0, 0, 1)
    std::vector<Vector> faceNormals = {};
    std::string bone = {};
    std::string texture = {}; // without one if empty
    rgbColour diffuse = {};
    float opacity = 1;
};

inline Bytes PlannedChunk(const ChunkPlan& plan)
{
    const auto size = [](const auto& list) { return static_cast<std::int32_t>(list.size()); };
    auto geometry = Bytes().Long(200).Long(static_cast<std::int32_t>(plan.kind)).Single(0);
    geometry.Long(size(plan.vertices)).Long(plan.primitives).Long(size(plan.indices));
    geometry.Long(size(plan.faceNormals)).Long(0).String(plan.bone);
    for (const Vertex& vertex : plan.vertices)
        geometry.Record(vertex);
    for (const int index : plan.indices)
        geometry.Short(index);
    for (std::size_t i = 0; i < plan.vertices.size(); ++i)
        geometry.Record(i < plan.normals.size() ? plan.normals[i] : Vector{0, 0, 1});
    for (const Vector& normal : plan.faceNormals)
        geometry.Record(normal);
    auto material = Bytes().Long(104).String("m").Long(0).Long(0).Single(plan.opacity);
    material.Record(std::array<rgbColour, 4>{{{}, plan.diffuse, {}, {}}}).Long(1).Long(!plan.texture.empty());
    if (!plan.texture.empty())
        material.Long(1).String(plan.texture).Single(1);
    return Bytes().Block("CHNK", Bytes().Long(100).Long(1).Block("MATL", material).Block("GEOM", geometry));
}

/// A mesh file of these chunks.
inline Bytes MeshOf(const std::vector<Bytes>& chunks)
{
    Bytes file = MeshHeader(static_cast<std::int32_t>(chunks.size()));
    for (const Bytes& chunk : chunks)
        file.Append(chunk);
    return file;
}

/// A model with one entry. Its files may be damaged: what was read of them stays.
inline std::shared_ptr<ZLMModel> ModelOf(const std::string& mesh, const std::string& anim)
{
    const auto model = std::make_shared<ZLMModel>();
    const auto entry = std::make_shared<MeshEntry>();
    entry->Name = u"e";
    const auto load = [](auto& object, const std::string& bytes)
    {
        try
        {
            static_cast<void>(object.LoadBytes(std::as_bytes(std::span(bytes))));
        }
        catch (const std::exception&)
        {
        }
    };
    load(*entry->Mesh, mesh);
    load(*entry->anim, anim);
    model->MeshTable()->Add(entry);
    return model;
}

} // namespace ZLMIM::Testing

#endif
