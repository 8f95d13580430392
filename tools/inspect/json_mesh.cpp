#include "json_fields.h"

#include <cstdint>
#include <unordered_map>

namespace ZLMIM::Inspect
{
namespace
{

/// Each bone's number, from 1, in a depth-first walk, parents first.
using BoneNumbers = std::unordered_map<const Bone*, std::int32_t>;

void NumberBones(const std::shared_ptr<Bone>& bone, BoneNumbers& numbers)
{
    if (!bone)
        return;
    numbers.emplace(bone.get(), static_cast<std::int32_t>(numbers.size()) + 1);
    const auto children = bone->Children();
    if (!children)
        return;
    for (const auto& child : *children)
        NumberBones(child, numbers);
}

void WriteBone(JsonWriter& json, const Bone& bone, const Bone* above)
{
    json.BeginObject();
    json.Key("Name").Text(bone.Name);
    json.Key("Version").Integer(bone.Version);
    json.Key("Position");
    WriteRecord(json, bone.Position);
    json.Key("Rotation");
    WriteRecord(json, bone.Rotation);
    json.Key("ToMatrix");
    WriteRecord(json, bone.ToMatrix());
    json.Key("ParentOk").Boolean(bone.Parent().get() == above);
    json.Key("Children");
    WriteList(json, bone.Children(), [&](const Bone& child) { WriteBone(json, child, &bone); });
    json.EndObject();
}

void WriteAttachment(JsonWriter& json, const Attachment& attachment)
{
    json.BeginObject();
    json.Key("Version").Integer(attachment.Version);
    json.Key("Name").Text(attachment.Name);
    json.Key("Matrix");
    WriteRecord(json, attachment.Matrix);
    json.EndObject();
}

void WriteTexture(JsonWriter& json, const Texture& texture)
{
    json.BeginObject();
    json.Key("TextureType").Integer(static_cast<std::int32_t>(texture.TextureType));
    json.Key("Name").Text(texture.Name);
    json.Key("Amount").Float(texture.Amount);
    json.EndObject();
}

void WriteMaterial(JsonWriter& json, const Material& material)
{
    json.BeginObject();
    json.Key("Version").Integer(material.Version);
    json.Key("NumProperties").Integer(material.NumProperties);
    json.Key("TwoSided").Integer(material.TwoSided);
    json.Key("Opacity").Float(material.Opacity);
    json.Key("SpecularPower").Float(material.SpecularPower);
    json.Key("Textures");
    WriteList(json, material.Textures, [&json](const Texture& texture) { WriteTexture(json, texture); });
    json.Key("Name").Text(material.Name);
    json.Key("Ambient");
    WriteRecord(json, material.Ambient);
    json.Key("Diffuse");
    WriteRecord(json, material.Diffuse);
    json.Key("Specular");
    WriteRecord(json, material.Specular);
    json.Key("Emissive");
    WriteRecord(json, material.Emissive);
    json.EndObject();
}

void WriteGeometry(JsonWriter& json, const Geometry& geometry, const BoneNumbers& bones)
{
    json.BeginObject();
    json.Key("Version").Integer(geometry.Version);
    json.Key("Area").Float(geometry.Area);
    json.Key("FaceNormals");
    WriteOrNull(json, geometry.FaceNormals,
                [&json](const auto& normals) { WriteRecords(json, normals.Entries()); });
    json.Key("PrimitiveCount").Integer(geometry.PrimitiveCount);
    json.Key("MaxInfl").Integer(geometry.MaxInfl);
    json.Key("PrimitiveType").Integer(static_cast<std::int32_t>(geometry.PrimitiveType));
    json.Key("Bone").Text(geometry.Bone);
    json.Key("BoneObject");
    if (const auto bone = bones.find(geometry.BoneObject.get()); bone != bones.end())
        json.Integer(bone->second);
    else
        json.Null();
    json.Key("MaxVertices").Integer(geometry.MaxVertices());
    json.Key("MaxVertNormal").Integer(geometry.MaxVertNormal());
    json.Key("MaxIndex").Integer(geometry.MaxIndex());
    json.Key("Vertices");
    WriteRecords(json, geometry.Vertices());
    json.Key("VertexNormals");
    WriteRecords(json, geometry.VertexNormals());
    json.Key("Indices").BeginArray();
    for (const std::int32_t index : geometry.Indices())
        json.Integer(index);
    json.EndArray();
    json.EndObject();
}

void WriteChunk(JsonWriter& json, const Chunk& chunk, const BoneNumbers& bones)
{
    json.BeginObject();
    json.Key("Material");
    WriteOrNull(json, chunk.Material, [&json](const Material& material) { WriteMaterial(json, material); });
    json.Key("Geometry");
    WriteOrNull(json, chunk.Geometry,
                [&](const Geometry& geometry) { WriteGeometry(json, geometry, bones); });
    json.Key("Version").Integer(chunk.Version);
    json.Key("Id").Integer(chunk.Id);
    json.EndObject();
}

} // namespace

void WriteFields(JsonWriter& json, const Mesh& mesh)
{
    BoneNumbers bones;
    NumberBones(mesh.RootBone, bones);

    json.Key("ErrorMessage").Text(mesh.ErrorMessage);
    json.Key("ChunkCount").Integer(mesh.ChunkCount);
    json.Key("Version").Integer(mesh.Version);
    json.Key("FileSize").Integer(mesh.FileSize);
    json.Key("Attachments");
    WriteList(json, mesh.Attachments,
              [&json](const Attachment& attachment) { WriteAttachment(json, attachment); });
    json.Key("Chunks");
    WriteList(json, mesh.Chunks, [&](const Chunk& chunk) { WriteChunk(json, chunk, bones); });
    json.Key("RootBone");
    WriteOrNull(json, mesh.RootBone, [&json](const Bone& root) { WriteBone(json, root, nullptr); });
    json.Key("AttVersion").Integer(mesh.AttVersion);
    json.Key("Polygons").Integer(mesh.Polygons);
    json.Key("FileName").Text(mesh.FileName);
    json.Key("BoneCount").Integer(mesh.BoneCount);
    json.Key("VertexCount").Integer(mesh.VertexCount);
    json.Key("TextureCount").Integer(mesh.TextureCount);
}

} // namespace ZLMIM::Inspect
