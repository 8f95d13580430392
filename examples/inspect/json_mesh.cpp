#include "json_objects.h"

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

Json BoneToJson(const Bone& bone, const Bone* above)
{
    Json json;
    json["Name"] = TextToJson(bone.Name);
    json["Version"] = bone.Version;
    json["Position"] = RecordToJson(bone.Position);
    json["Rotation"] = RecordToJson(bone.Rotation);
    json["ToMatrix"] = RecordToJson(bone.ToMatrix());
    json["ParentOk"] = bone.Parent().get() == above;
    json["Children"] =
        ListOf(bone.Children(), [&bone](const Bone& child) { return BoneToJson(child, &bone); });
    return json;
}

Json AttachmentToJson(const Attachment& attachment)
{
    Json json;
    json["Version"] = attachment.Version;
    json["Name"] = TextToJson(attachment.Name);
    json["Matrix"] = RecordToJson(attachment.Matrix);
    return json;
}

Json TextureToJson(const Texture& texture)
{
    Json json;
    json["TextureType"] = static_cast<std::int32_t>(texture.TextureType);
    json["Name"] = TextToJson(texture.Name);
    json["Amount"] = texture.Amount;
    return json;
}

Json MaterialToJson(const Material& material)
{
    Json json;
    json["Version"] = material.Version;
    json["NumProperties"] = material.NumProperties;
    json["TwoSided"] = material.TwoSided;
    json["Opacity"] = material.Opacity;
    json["SpecularPower"] = material.SpecularPower;
    json["Textures"] = ListOf(material.Textures, TextureToJson);
    json["Name"] = TextToJson(material.Name);
    json["Ambient"] = RecordToJson(material.Ambient);
    json["Diffuse"] = RecordToJson(material.Diffuse);
    json["Specular"] = RecordToJson(material.Specular);
    json["Emissive"] = RecordToJson(material.Emissive);
    return json;
}

Json GeometryToJson(const Geometry& geometry, const BoneNumbers& bones)
{
    Json json;
    json["Version"] = geometry.Version;
    json["Area"] = geometry.Area;
    json["FaceNormals"] =
        OrNull(geometry.FaceNormals, [](const auto& normals) { return RecordsToJson(normals.Entries()); });
    json["PrimitiveCount"] = geometry.PrimitiveCount;
    json["MaxInfl"] = geometry.MaxInfl;
    json["PrimitiveType"] = static_cast<std::int32_t>(geometry.PrimitiveType);
    json["Bone"] = TextToJson(geometry.Bone);
    const auto bone = bones.find(geometry.BoneObject.get());
    json["BoneObject"] = bone == bones.end() ? Json(nullptr) : Json(bone->second);
    json["MaxVertices"] = geometry.MaxVertices();
    json["MaxVertNormal"] = geometry.MaxVertNormal();
    json["MaxIndex"] = geometry.MaxIndex();
    json["Vertices"] = RecordsToJson(geometry.Vertices());
    json["VertexNormals"] = RecordsToJson(geometry.VertexNormals());
    json["Indices"] = ElementsToJson(std::as_bytes(geometry.Indices()), Element::Integer);
    return json;
}

Json ChunkToJson(const Chunk& chunk, const BoneNumbers& bones)
{
    Json json;
    json["Material"] = OrNull(chunk.Material, MaterialToJson);
    json["Geometry"] = OrNull(chunk.Geometry,
                              [&bones](const Geometry& geometry) { return GeometryToJson(geometry, bones); });
    json["Version"] = chunk.Version;
    json["Id"] = chunk.Id;
    return json;
}

} // namespace

Json ToJson(const Mesh& mesh)
{
    BoneNumbers bones;
    NumberBones(mesh.RootBone, bones);

    Json json;
    json["ErrorMessage"] = TextToJson(mesh.ErrorMessage);
    json["ChunkCount"] = mesh.ChunkCount;
    json["Version"] = mesh.Version;
    json["FileSize"] = mesh.FileSize;
    json["Attachments"] = ListOf(mesh.Attachments, AttachmentToJson);
    json["Chunks"] = ListOf(mesh.Chunks, [&bones](const Chunk& chunk) { return ChunkToJson(chunk, bones); });
    json["RootBone"] = OrNull(mesh.RootBone, [](const Bone& root) { return BoneToJson(root, nullptr); });
    json["AttVersion"] = mesh.AttVersion;
    json["Polygons"] = mesh.Polygons;
    json["FileName"] = TextToJson(mesh.FileName);
    json["BoneCount"] = mesh.BoneCount;
    json["VertexCount"] = mesh.VertexCount;
    json["TextureCount"] = mesh.TextureCount;
    return json;
}

} // namespace ZLMIM::Inspect
