// Made by zlmim_component_files from the tables of the classes: change those.
// clang-format off
#ifndef ZLMIM_COMPONENT_HOST_H
#define ZLMIM_COMPONENT_HOST_H

#include "zlmim/component/abi.h"
#include "zlmim/component/guid.h"
#include "zlmim/component/holders.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

/// For hosts of the component: the interfaces of its classes, their identifiers, records and enumerations, and
/// holders for texts, variants and counted references. A host needs no library for them: it loads the module
/// and asks it for `DllGetClassObject`.
///
/// Every member answers a status; its result travels as the last argument and belongs to the host. Lists are
/// numbered from 1, what `Geometry` and `BoneAnim` hold by index from 0.
namespace ZLMIM::Host
{

using Component::Pointer;
using Component::Text;
using Component::Variant;

/// The identifiers of interface `I`: its own, and that of its class.
template <class I>
inline constexpr GUID kInterfaceId{};
template <class I>
inline constexpr GUID kClassId{};

/// What the module exports under the name "DllGetClassObject".
using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID classId, REFIID iid, void** object);

/// A new object of the class whose interface is `I`.
template <class I>
[[nodiscard]] HRESULT Create(GetClassObject getClassObject, Pointer<I>& object)
{
    Pointer<IClassFactory> factory;
    const HRESULT status = getClassObject(kClassId<I>, Component::kIClassFactory, factory.OutAny());
    return FAILED(status) ? status : factory->CreateInstance(nullptr, kInterfaceId<I>, object.OutAny());
}

struct _Collection;
struct _anim;
struct _Attachment;
struct _Chunk;
struct _Material;
struct _Geometry;
struct _Texture;
struct _BoneAnim;
struct _ZLMModel;
struct _MeshEntry;
struct _Mesh;
struct _Bone;

struct _Collection : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE Item(VARIANT* Index, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* Item, VARIANT* Key, VARIANT* Before, VARIANT* After) = 0;
    virtual HRESULT STDMETHODCALLTYPE Count(LONG* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* Index) = 0;
    virtual HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** result) = 0;
};

/// The object representing an IM file from ZLM.
struct _anim : IDispatch
{
    /// Text if Load() fails
    virtual HRESULT STDMETHODCALLTYPE get_ErrorMessage(BSTR* value) = 0;
    /// Text if Load() fails
    virtual HRESULT STDMETHODCALLTYPE put_ErrorMessage(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FrameCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FrameCount(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FPS(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FPS(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MetScale(float* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MetScale(float value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileSize(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FileSize(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RootBone(_BoneAnim** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_RootBone(_BoneAnim* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FileName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR Name, VARIANT_BOOL* result) = 0;
};

/// ZLM Attachment point definition.
struct _Attachment : IDispatch
{
    /// Normally 100
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Normally 100
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// 4x3 matrix for rotation/position of the attachment
    virtual HRESULT STDMETHODCALLTYPE get_Matrix(Matrix* value) = 0;
    /// 4x3 matrix for rotation/position of the attachment
    virtual HRESULT STDMETHODCALLTYPE put_Matrix(Matrix* value) = 0;
};

/// The material and geometry for part of the mesh.
struct _Chunk : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE get_Material(_Material** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Material(_Material* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Geometry(_Geometry** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Geometry(_Geometry* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Id(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Id(LONG value) = 0;
};

/// Material used by a chunk.
struct _Material : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// usually 0
    virtual HRESULT STDMETHODCALLTYPE get_NumProperties(LONG* value) = 0;
    /// usually 0
    virtual HRESULT STDMETHODCALLTYPE put_NumProperties(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TwoSided(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_TwoSided(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Opacity(float* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Opacity(float value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SpecularPower(float* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_SpecularPower(float value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Textures(_Collection** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Textures(_Collection* value) = 0;
    /// The text after the "m." in the name determines the rendering method used.
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// The text after the "m." in the name determines the rendering method used.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Ambient(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Ambient(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Diffuse(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Diffuse(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Specular(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Specular(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Emissive(rgbColour* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Emissive(rgbColour* value) = 0;
};

/// All the points, normals and face definitions.
struct _Geometry : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Area(float* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Area(float value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FaceNormals(_Collection** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_FaceNormals(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PrimitiveCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_PrimitiveCount(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MaxInfl(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MaxInfl(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PrimitiveType(PrimFlag* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_PrimitiveType(PrimFlag value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Bone(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Bone(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BoneObject(_Bone** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_BoneObject(_Bone* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MaxVertices(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MaxVertices(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MaxVertNormal(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MaxVertNormal(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVertex(LONG* index, Vertex* v) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVertex(LONG* index, Vertex* v, VARIANT_BOOL* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetVertexNormal(LONG* index, Vector* v) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetVertexNormal(LONG* index, Vector* v, VARIANT_BOOL* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MaxIndex(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_MaxIndex(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetIndex(LONG* index, LONG i) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetIndex(LONG* index, LONG* result) = 0;
};

struct _Texture : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE get_TextureType(txtype* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_TextureType(txtype value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// Influence over the material as a whole.
    virtual HRESULT STDMETHODCALLTYPE get_Amount(float* value) = 0;
    /// Influence over the material as a whole.
    virtual HRESULT STDMETHODCALLTYPE put_Amount(float value) = 0;
};

/// Bone object used by animated meshes.
struct _BoneAnim : IDispatch
{
    /// Child Bone Objects
    virtual HRESULT STDMETHODCALLTYPE get_Children(_Collection** value) = 0;
    /// Child Bone Objects
    virtual HRESULT STDMETHODCALLTYPE putref_Children(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitFrames(LONG i) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFrame(LONG i, Keyframe* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFrame(LONG i, Keyframe* k) = 0;
};

/// The object representing a CONFIG.TXT file from ZLM.
struct _ZLMModel : IDispatch
{
    /// A list of MeshEntry objects
    virtual HRESULT STDMETHODCALLTYPE get_MeshTable(_Collection** value) = 0;
    /// A list of MeshEntry objects
    virtual HRESULT STDMETHODCALLTYPE putref_MeshTable(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AssetFileName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AssetFileName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Author(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Author(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UserName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_UserName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Kind(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Kind(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Description(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Description(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ZLMBuild(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ZLMBuild(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Bogies(_Collection** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Bogies(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BogieNames(_Collection** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_BogieNames(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Pantograph(_ZLMModel** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Pantograph(_ZLMModel* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_kuid(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_kuid(BSTR value) = 0;
    /// Load up the Config File
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR* ConfigFileName) = 0;
};

struct _MeshEntry : IDispatch
{
    virtual HRESULT STDMETHODCALLTYPE get_Mesh(_Mesh** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Mesh(_Mesh* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_anim(_anim** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_anim(_anim* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AttParent(_MeshEntry** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_AttParent(_MeshEntry* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Att(_Attachment** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Att(_Attachment* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Parent(_ZLMModel** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Parent(_ZLMModel* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(_ZLMModel** Model, BSTR* sName, BSTR* MeshFile, BSTR* AnimFile, BSTR* AttPar, BSTR* AttName) = 0;
};

/// The object representing an IM file from ZLM.
struct _Mesh : IDispatch
{
    /// Text if Load() fails
    virtual HRESULT STDMETHODCALLTYPE get_ErrorMessage(BSTR* value) = 0;
    /// Text if Load() fails
    virtual HRESULT STDMETHODCALLTYPE put_ErrorMessage(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ChunkCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_ChunkCount(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileSize(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FileSize(LONG value) = 0;
    /// All Attachment type objects in the mesh. 
    virtual HRESULT STDMETHODCALLTYPE get_Attachments(_Collection** value) = 0;
    /// All Attachment type objects in the mesh. 
    virtual HRESULT STDMETHODCALLTYPE putref_Attachments(_Collection* value) = 0;
    /// A collection of Chunk Objects that make up the mesh.
    virtual HRESULT STDMETHODCALLTYPE get_Chunks(_Collection** value) = 0;
    /// A collection of Chunk Objects that make up the mesh.
    virtual HRESULT STDMETHODCALLTYPE putref_Chunks(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RootBone(_Bone** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_RootBone(_Bone* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AttVersion(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AttVersion(LONG value) = 0;
    /// Number of triangles in the whole mesh
    virtual HRESULT STDMETHODCALLTYPE get_Polygons(LONG* value) = 0;
    /// Number of triangles in the whole mesh
    virtual HRESULT STDMETHODCALLTYPE put_Polygons(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_FileName(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_FileName(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR Name, VARIANT_BOOL* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_BoneCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_BoneCount(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VertexCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_VertexCount(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_TextureCount(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_TextureCount(LONG value) = 0;
};

/// Bone object used by animated meshes.
struct _Bone : IDispatch
{
    /// Child Bone Objects
    virtual HRESULT STDMETHODCALLTYPE get_Children(_Collection** value) = 0;
    /// Child Bone Objects
    virtual HRESULT STDMETHODCALLTYPE putref_Children(_Collection* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Parent(_Bone** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE putref_Parent(_Bone* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Position(Vector* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Position(Vector* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Rotation(Quaternion* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Rotation(Quaternion* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE ToMatrix(Matrix* result) = 0;
};

template <>
inline constexpr GUID kInterfaceId<_Collection> = Component::ParseGuid("A4C46780-499F-101B-BB78-00AA00383CBB");
template <>
inline constexpr GUID kInterfaceId<_anim> = Component::ParseGuid("8CA1AFC4-963D-4111-912E-ED20800DE670");
template <>
inline constexpr GUID kClassId<_anim> = Component::ParseGuid("DF1AD90E-EBD4-4BBF-8DEF-55B7DD3D9BB4");
template <>
inline constexpr GUID kInterfaceId<_Attachment> = Component::ParseGuid("30E49CD5-F82D-4ABE-A3A4-3EA91B6E75D7");
template <>
inline constexpr GUID kClassId<_Attachment> = Component::ParseGuid("1420EE45-71E3-4AB1-8819-4F1FBE6439DD");
template <>
inline constexpr GUID kInterfaceId<_Chunk> = Component::ParseGuid("5AB1D67C-2E99-4E4A-856D-AF147F91D608");
template <>
inline constexpr GUID kClassId<_Chunk> = Component::ParseGuid("AAE8BE13-C65E-4DCA-86E0-6EB02F0169E3");
template <>
inline constexpr GUID kInterfaceId<_Material> = Component::ParseGuid("32749DEA-FB00-44D6-9676-9EFA99D54657");
template <>
inline constexpr GUID kClassId<_Material> = Component::ParseGuid("53ED60C5-839C-45B7-8475-FA37BF611D27");
template <>
inline constexpr GUID kInterfaceId<_Geometry> = Component::ParseGuid("DE26527F-A37B-4FF5-831D-E36F575C80E4");
template <>
inline constexpr GUID kClassId<_Geometry> = Component::ParseGuid("82012617-A6B0-4C04-B9E6-E47327ECFDD8");
template <>
inline constexpr GUID kInterfaceId<_Texture> = Component::ParseGuid("1E9A2082-879C-428A-B726-FE65F2B92EA1");
template <>
inline constexpr GUID kClassId<_Texture> = Component::ParseGuid("B11F155D-9B04-4C00-857B-C8902EF329C6");
template <>
inline constexpr GUID kInterfaceId<_BoneAnim> = Component::ParseGuid("6A0629D7-A83A-494D-88E2-EBDB23345A6F");
template <>
inline constexpr GUID kClassId<_BoneAnim> = Component::ParseGuid("ED5B541C-FEBF-43AA-A8D5-33372B88BFC5");
template <>
inline constexpr GUID kInterfaceId<_ZLMModel> = Component::ParseGuid("A83B6793-68EE-4E0E-A23C-4D656B037322");
template <>
inline constexpr GUID kClassId<_ZLMModel> = Component::ParseGuid("EA4DAF51-E7AC-4BED-8395-E29AD2C93E1F");
template <>
inline constexpr GUID kInterfaceId<_MeshEntry> = Component::ParseGuid("F378CA53-C077-487F-A055-F7ED91947255");
template <>
inline constexpr GUID kClassId<_MeshEntry> = Component::ParseGuid("A82C949E-A450-47AF-A52E-D44800E70FFA");
template <>
inline constexpr GUID kInterfaceId<_Mesh> = Component::ParseGuid("025B8DCE-CDF1-40E6-8510-776E3D2DF24C");
template <>
inline constexpr GUID kClassId<_Mesh> = Component::ParseGuid("5EC8E051-39D2-469F-AD68-CEEC1A0E7729");
template <>
inline constexpr GUID kInterfaceId<_Bone> = Component::ParseGuid("B8C0DE3C-1C82-4C2B-AFB7-820026A49CDE");
template <>
inline constexpr GUID kClassId<_Bone> = Component::ParseGuid("93EA3F7B-D773-40A5-A5EC-714D91248041");

} // namespace ZLMIM::Host

#endif
