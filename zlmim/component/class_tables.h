#pragma once

#include "zlmim/anim/anim.h"
#include "zlmim/anim/bone_anim.h"
#include "zlmim/component/collection_interface.h"
#include "zlmim/component/interface_table.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/mesh/mesh.h"

#include <string>
#include <string_view>

namespace ZLMIM::Component
{

/// The tables of the eleven classes: every member of each interface, in the order of the slots, and the
/// identifiers. All else that describes the classes is made from them.

// clang-format off
template <> inline constexpr const char* kClassName<Anim> = "anim";
template <> inline constexpr const char* kClassName<Attachment> = "Attachment";
template <> inline constexpr const char* kClassName<Chunk> = "Chunk";
template <> inline constexpr const char* kClassName<Material> = "Material";
template <> inline constexpr const char* kClassName<Geometry> = "Geometry";
template <> inline constexpr const char* kClassName<Texture> = "Texture";
template <> inline constexpr const char* kClassName<BoneAnim> = "BoneAnim";
template <> inline constexpr const char* kClassName<ZLMModel> = "ZLMModel";
template <> inline constexpr const char* kClassName<MeshEntry> = "MeshEntry";
template <> inline constexpr const char* kClassName<Mesh> = "Mesh";
template <> inline constexpr const char* kClassName<Bone> = "Bone";

/// The overloads that hosts call.
inline constexpr bool (Mesh::*kLoadMesh)(std::u16string_view) = &Mesh::Load;
inline constexpr bool (Anim::*kLoadAnim)(std::u16string_view) = &Anim::Load;
inline constexpr void (ZLMModel::*kLoadModel)(const std::u16string&) = &ZLMModel::Load;
inline constexpr void (MeshEntry::*kLoadEntry)(const std::shared_ptr<ZLMModel>&, const std::u16string&,
                                               const std::u16string&, const std::u16string&, std::u16string&,
                                               std::u16string&) = &MeshEntry::Load;

inline constexpr const char* kErrorMessageHelp = "Text if Load() fails";
inline constexpr const char* kChildrenHelp = "Child Bone Objects";

template <> struct Interface<Anim>
{
    static constexpr InterfaceId kIds[] = {{"_anim", ParseGuid("8CA1AFC4-963D-4111-912E-ED20800DE670")}};
    static constexpr auto kRows = Table(
        Property<&Anim::ErrorMessage>("ErrorMessage", kErrorMessageHelp),
        Property<&Anim::FrameCount>("FrameCount"),
        Property<&Anim::FPS>("FPS"),
        Property<&Anim::Version>("Version"),
        Property<&Anim::MetScale>("MetScale"),
        Property<&Anim::Name>("Name"),
        Property<&Anim::FileSize>("FileSize"),
        Property<&Anim::RootBone>("RootBone"),
        Property<&Anim::FileName>("FileName"),
        Method<kLoadAnim, Passing::In>("Load", {"Name"}));
    static constexpr ClassInfo kInfo{kClassName<Anim>, ParseGuid("DF1AD90E-EBD4-4BBF-8DEF-55B7DD3D9BB4"), kMeshHelp,
                                     kIds, kRows.members, &Create<Anim>};
};

template <> struct Interface<Attachment>
{
    static constexpr InterfaceId kIds[] = {{"_Attachment", ParseGuid("30E49CD5-F82D-4ABE-A3A4-3EA91B6E75D7")}};
    static constexpr auto kRows = Table(
        Property<&Attachment::Version>("Version", "Normally 100"),
        Property<&Attachment::Name>("Name"),
        Property<&Attachment::Matrix>("Matrix", "4x3 matrix for rotation/position of the attachment"));
    static constexpr ClassInfo kInfo{kClassName<Attachment>, ParseGuid("1420EE45-71E3-4AB1-8819-4F1FBE6439DD"), "ZLM Attachment point definition",
                                     kIds, kRows.members, &Create<Attachment>};
};

template <> struct Interface<Chunk>
{
    static constexpr InterfaceId kIds[] = {{"_Chunk", ParseGuid("5AB1D67C-2E99-4E4A-856D-AF147F91D608")}};
    static constexpr auto kRows = Table(
        Property<&Chunk::Material>("Material"),
        Property<&Chunk::Geometry>("Geometry"),
        Property<&Chunk::Version>("Version"),
        Property<&Chunk::Id>("Id"));
    static constexpr ClassInfo kInfo{kClassName<Chunk>, ParseGuid("AAE8BE13-C65E-4DCA-86E0-6EB02F0169E3"), "The material and geometry for part of the mesh",
                                     kIds, kRows.members, &Create<Chunk>};
};

template <> struct Interface<Material>
{
    static constexpr InterfaceId kIds[] = {{"_Material", ParseGuid("32749DEA-FB00-44D6-9676-9EFA99D54657")}};
    static constexpr auto kRows = Table(
        Property<&Material::Version>("Version"),
        Property<&Material::NumProperties>("NumProperties", "usually 0"),
        Property<&Material::TwoSided>("TwoSided"),
        Property<&Material::Opacity>("Opacity"),
        Property<&Material::SpecularPower>("SpecularPower"),
        Property<&Material::Textures>("Textures"),
        Property<&Material::Name>("Name", "The text after the \"m.\" in the name determines the rendering method used."),
        Property<&Material::Ambient>("Ambient"),
        PropertyPutFirst<&Material::Diffuse>("Diffuse"),
        PropertyPutFirst<&Material::Specular>("Specular"),
        PropertyPutFirst<&Material::Emissive>("Emissive"));
    static constexpr ClassInfo kInfo{kClassName<Material>, ParseGuid("53ED60C5-839C-45B7-8475-FA37BF611D27"), "Material used by a chunk",
                                     kIds, kRows.members, &Create<Material>};
};

template <> struct Interface<Geometry>
{
    static constexpr InterfaceId kIds[] = {{"_Geometry", ParseGuid("DE26527F-A37B-4FF5-831D-E36F575C80E4")}};
    static constexpr auto kRows = Table(
        Property<&Geometry::Version>("Version"),
        Property<&Geometry::Area>("Area"),
        Property<&Geometry::FaceNormals>("FaceNormals"),
        Property<&Geometry::PrimitiveCount>("PrimitiveCount"),
        Property<&Geometry::MaxInfl>("MaxInfl"),
        Property<&Geometry::PrimitiveType>("PrimitiveType"),
        Property<&Geometry::Bone>("Bone"),
        Property<&Geometry::BoneObject>("BoneObject"),
        Property<&Geometry::MaxVertices, &Geometry::SetMaxVertices>("MaxVertices"),
        Property<&Geometry::MaxVertNormal, &Geometry::SetMaxVertNormal>("MaxVertNormal"),
        Method<&Geometry::SetVertex, Passing::Ref, Passing::Ref>("SetVertex", {"index", "v"}),
        Method<&Geometry::GetVertex, Passing::Ref, Passing::InOut>("GetVertex", {"index", "v"}),
        Method<&Geometry::SetVertexNormal, Passing::Ref, Passing::Ref>("SetVertexNormal", {"index", "v"}),
        Method<&Geometry::GetVertexNormal, Passing::Ref, Passing::InOut>("GetVertexNormal", {"index", "v"}),
        Property<&Geometry::MaxIndex, &Geometry::SetMaxIndex>("MaxIndex"),
        Method<&Geometry::SetIndex, Passing::Ref, Passing::In>("SetIndex", {"index", "i"}),
        Method<&Geometry::GetIndex, Passing::Ref>("GetIndex", {"index"}));
    static constexpr ClassInfo kInfo{kClassName<Geometry>, ParseGuid("82012617-A6B0-4C04-B9E6-E47327ECFDD8"), kGeometryHelp,
                                     kIds, kRows.members, &Create<Geometry>};
};

template <> struct Interface<Texture>
{
    static constexpr InterfaceId kIds[] = {{"_Texture", ParseGuid("1E9A2082-879C-428A-B726-FE65F2B92EA1")}};
    static constexpr auto kRows = Table(
        Property<&Texture::TextureType>("TextureType"),
        Property<&Texture::Name>("Name"),
        Property<&Texture::Amount>("Amount", "Influence over the material as a whole."));
    static constexpr ClassInfo kInfo{kClassName<Texture>, ParseGuid("B11F155D-9B04-4C00-857B-C8902EF329C6"), nullptr,
                                     kIds, kRows.members, &Create<Texture>};
};

template <> struct Interface<BoneAnim>
{
    static constexpr InterfaceId kIds[] = {{"_BoneAnim", ParseGuid("6A0629D7-A83A-494D-88E2-EBDB23345A6F")}};
    static constexpr auto kRows = Table(
        Property<&BoneAnim::Children, &BoneAnim::SetChildren>("Children", kChildrenHelp),
        Property<&BoneAnim::Name>("Name"),
        Property<&BoneAnim::Version>("Version"),
        Method<&BoneAnim::InitFrames, Passing::In>("InitFrames", {"i"}),
        Method<&BoneAnim::GetFrame, Passing::In>("GetFrame", {"i"}),
        Method<&BoneAnim::SetFrame, Passing::In, Passing::Ref>("SetFrame", {"i", "k"}));
    static constexpr ClassInfo kInfo{kClassName<BoneAnim>, ParseGuid("ED5B541C-FEBF-43AA-A8D5-33372B88BFC5"), kBoneHelp,
                                     kIds, kRows.members, &Create<BoneAnim>};
};

template <> struct Interface<ZLMModel>
{
    static constexpr InterfaceId kIds[] = {{"_ZLMModel", ParseGuid("A83B6793-68EE-4E0E-A23C-4D656B037322")}};
    static constexpr auto kRows = Table(
        Property<&ZLMModel::MeshTable, &ZLMModel::SetMeshTable>("MeshTable", "A list of MeshEntry objects"),
        Property<&ZLMModel::AssetFileName>("AssetFileName"),
        Property<&ZLMModel::Author>("Author"),
        Property<&ZLMModel::UserName>("UserName"),
        Property<&ZLMModel::Kind>("Kind"),
        Property<&ZLMModel::Description>("Description"),
        Property<&ZLMModel::ZLMBuild>("ZLMBuild"),
        Property<&ZLMModel::Bogies>("Bogies"),
        Property<&ZLMModel::BogieNames>("BogieNames"),
        Property<&ZLMModel::Pantograph>("Pantograph"),
        Property<&ZLMModel::kuid, &ZLMModel::SetKuid>("kuid"),
        Method<kLoadModel, Passing::Ref>("Load", {"ConfigFileName"}, "Load up the Config File"));
    static constexpr ClassInfo kInfo{kClassName<ZLMModel>, ParseGuid("EA4DAF51-E7AC-4BED-8395-E29AD2C93E1F"), "The object representing a CONFIG.TXT file from ZLM",
                                     kIds, kRows.members, &Create<ZLMModel>};
};

template <> struct Interface<MeshEntry>
{
    static constexpr InterfaceId kIds[] = {{"_MeshEntry", ParseGuid("F378CA53-C077-487F-A055-F7ED91947255")}};
    static constexpr auto kRows = Table(
        Property<&MeshEntry::Mesh>("Mesh"),
        Property<&MeshEntry::anim>("anim"),
        Property<&MeshEntry::Name>("Name"),
        Property<&MeshEntry::AttParent, &MeshEntry::SetAttParent>("AttParent"),
        Property<&MeshEntry::Att>("Att"),
        Property<&MeshEntry::Parent, &MeshEntry::SetParent>("Parent"),
        Method<kLoadEntry, Passing::Ref, Passing::Ref, Passing::Ref, Passing::Ref, Passing::InOut, Passing::InOut>("Load", {"Model", "sName", "MeshFile", "AnimFile", "AttPar", "AttName"}));
    static constexpr ClassInfo kInfo{kClassName<MeshEntry>, ParseGuid("A82C949E-A450-47AF-A52E-D44800E70FFA"), nullptr,
                                     kIds, kRows.members, &Create<MeshEntry>};
};

template <> struct Interface<Mesh>
{
    static constexpr InterfaceId kIds[] = {
        {"Mesh___v0", ParseGuid("8FEEE349-8D59-450E-87CE-ECA64FC6C4CB"), 0},
        {"Mesh___v1", ParseGuid("DD46449E-A679-4698-B9EF-B60BD99D5B75"), 1},
        {"Mesh___v2", ParseGuid("CFFD6A3F-A7C6-4CBC-B3B4-14A0ED3D03D8"), 2},
        {"_Mesh", ParseGuid("025B8DCE-CDF1-40E6-8510-776E3D2DF24C"), 3}};
    static constexpr auto kRows = Table(
        Property<&Mesh::ErrorMessage>("ErrorMessage", kErrorMessageHelp),
        Property<&Mesh::ChunkCount>("ChunkCount"),
        Property<&Mesh::Version>("Version"),
        Property<&Mesh::FileSize>("FileSize"),
        Property<&Mesh::Attachments>("Attachments", "All Attachment type objects in the mesh. "),
        Property<&Mesh::Chunks>("Chunks", "A collection of Chunk Objects that make up the mesh."),
        Property<&Mesh::RootBone>("RootBone"),
        Property<&Mesh::AttVersion>("AttVersion"),
        Property<&Mesh::Polygons>("Polygons", "Number of triangles in the whole mesh"),
        Property<&Mesh::FileName>("FileName"),
        Method<kLoadMesh, Passing::In>("Load", {"Name"}),
        Property<&Mesh::BoneCount>("BoneCount"),
        Property<&Mesh::VertexCount>("VertexCount"),
        Property<&Mesh::TextureCount>("TextureCount"));
    static constexpr ClassInfo kInfo{kClassName<Mesh>, ParseGuid("5EC8E051-39D2-469F-AD68-CEEC1A0E7729"), kMeshHelp,
                                     kIds, kRows.members, &Create<Mesh>};
};

template <> struct Interface<Bone>
{
    static constexpr InterfaceId kIds[] = {{"_Bone", ParseGuid("B8C0DE3C-1C82-4C2B-AFB7-820026A49CDE")}};
    static constexpr auto kRows = Table(
        Property<&Bone::Children, &Bone::SetChildren>("Children", kChildrenHelp),
        Property<&Bone::Name>("Name"),
        Property<&Bone::Version>("Version"),
        Property<&Bone::Parent, &Bone::SetParent>("Parent"),
        Property<&Bone::Position>("Position"),
        Property<&Bone::Rotation>("Rotation"),
        Method<&Bone::ToMatrix>("ToMatrix"));
    static constexpr ClassInfo kInfo{kClassName<Bone>, ParseGuid("93EA3F7B-D773-40A5-A5EC-714D91248041"), kBoneHelp,
                                     kIds, kRows.members, &Create<Bone>};
};

// clang-format on

} // namespace ZLMIM::Component
