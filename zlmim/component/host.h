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
/// An interface has the members of the class that bears its name: they hold the same, in the same units, and
/// change in the same way. Every member answers a status, `S_OK` where all went well; its result travels as the
/// last argument and belongs to the host. Lists are numbered from 1, what `Geometry` and `BoneAnim` hold by
/// index from 0. What the classes raise comes as a status:
///
/// | Raised | Status |
/// |---|---|
/// | `BoundsError` | `DISP_E_BADINDEX` |
/// | `OverflowError` | `DISP_E_OVERFLOW` |
/// | `FileSystemError` | 0x800A0000 + its number |
/// | `std::bad_alloc` | `E_OUTOFMEMORY` |
/// | `std::invalid_argument`, and an object of another class or another module | `E_INVALIDARG` |
/// | a null place for a result | `E_POINTER` |
/// | all else | `E_FAIL` |
namespace ZLMIM::Host
{

/// \addtogroup hosts
/// @{

using Component::Pointer;
using Component::Text;
using Component::Variant;

/// The identifier of interface `I`.
template <class I>
inline constexpr GUID kInterfaceId{};
/// The identifier of the class whose interface is `I`.
template <class I>
inline constexpr GUID kClassId{};

/// What the module exports under the name "DllGetClassObject".
using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID classId, REFIID iid, void** object);

/// A new object of the class whose interface is `I`, which the host owns a reference to. Answers what the
/// module or its class factory answers.
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

/// A `ZLMIM::Collection` as hosts hold it.
struct _Collection : IDispatch
{
    /// \copydoc ZLMIM::Collection::Item
    virtual HRESULT STDMETHODCALLTYPE Item(VARIANT* Index, VARIANT* result) = 0;
    /// Appends a copy of `Item`, or a reference to it, which must be what the list holds. The rest must be left out.
    virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* Item, VARIANT* Key, VARIANT* Before, VARIANT* After) = 0;
    /// \copydoc ZLMIM::Collection::Count
    virtual HRESULT STDMETHODCALLTYPE Count(LONG* result) = 0;
    /// \copydoc ZLMIM::Collection::Remove
    virtual HRESULT STDMETHODCALLTYPE Remove(VARIANT* Index) = 0;
    /// A new `IEnumVARIANT` over the entries, in their order.
    virtual HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** result) = 0;
};

/// A `ZLMIM::Anim` as hosts hold it.
struct _anim : IDispatch
{
    /// \copydoc ZLMIM::Anim::ErrorMessage
    virtual HRESULT STDMETHODCALLTYPE get_ErrorMessage(BSTR* value) = 0;
    /// Writes what `get_ErrorMessage` gives.
    virtual HRESULT STDMETHODCALLTYPE put_ErrorMessage(BSTR value) = 0;
    /// \copydoc ZLMIM::Anim::FrameCount
    virtual HRESULT STDMETHODCALLTYPE get_FrameCount(LONG* value) = 0;
    /// Writes what `get_FrameCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FrameCount(LONG value) = 0;
    /// \copydoc ZLMIM::Anim::FPS
    virtual HRESULT STDMETHODCALLTYPE get_FPS(LONG* value) = 0;
    /// Writes what `get_FPS` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FPS(LONG value) = 0;
    /// \copydoc ZLMIM::Anim::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Anim::MetScale
    virtual HRESULT STDMETHODCALLTYPE get_MetScale(float* value) = 0;
    /// Writes what `get_MetScale` gives.
    virtual HRESULT STDMETHODCALLTYPE put_MetScale(float value) = 0;
    /// \copydoc ZLMIM::Anim::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::Anim::FileSize
    virtual HRESULT STDMETHODCALLTYPE get_FileSize(LONG* value) = 0;
    /// Writes what `get_FileSize` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FileSize(LONG value) = 0;
    /// \copydoc ZLMIM::Anim::RootBone
    virtual HRESULT STDMETHODCALLTYPE get_RootBone(_BoneAnim** value) = 0;
    /// Writes what `get_RootBone` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_RootBone(_BoneAnim* value) = 0;
    /// \copydoc ZLMIM::Anim::FileName
    virtual HRESULT STDMETHODCALLTYPE get_FileName(BSTR* value) = 0;
    /// Writes what `get_FileName` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FileName(BSTR value) = 0;
    /// \copydoc ZLMIM::Anim::Load
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR Name, VARIANT_BOOL* result) = 0;
};

/// A `ZLMIM::Attachment` as hosts hold it.
struct _Attachment : IDispatch
{
    /// \copydoc ZLMIM::Attachment::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Attachment::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::Attachment::Matrix
    virtual HRESULT STDMETHODCALLTYPE get_Matrix(Matrix* value) = 0;
    /// Writes what `get_Matrix` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Matrix(Matrix* value) = 0;
};

/// A `ZLMIM::Chunk` as hosts hold it.
struct _Chunk : IDispatch
{
    /// \copydoc ZLMIM::Chunk::Material
    virtual HRESULT STDMETHODCALLTYPE get_Material(_Material** value) = 0;
    /// Writes what `get_Material` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Material(_Material* value) = 0;
    /// \copydoc ZLMIM::Chunk::Geometry
    virtual HRESULT STDMETHODCALLTYPE get_Geometry(_Geometry** value) = 0;
    /// Writes what `get_Geometry` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Geometry(_Geometry* value) = 0;
    /// \copydoc ZLMIM::Chunk::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Chunk::Id
    virtual HRESULT STDMETHODCALLTYPE get_Id(LONG* value) = 0;
    /// Writes what `get_Id` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Id(LONG value) = 0;
};

/// A `ZLMIM::Material` as hosts hold it.
struct _Material : IDispatch
{
    /// \copydoc ZLMIM::Material::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Material::NumProperties
    virtual HRESULT STDMETHODCALLTYPE get_NumProperties(LONG* value) = 0;
    /// Writes what `get_NumProperties` gives.
    virtual HRESULT STDMETHODCALLTYPE put_NumProperties(LONG value) = 0;
    /// \copydoc ZLMIM::Material::TwoSided
    virtual HRESULT STDMETHODCALLTYPE get_TwoSided(LONG* value) = 0;
    /// Writes what `get_TwoSided` gives.
    virtual HRESULT STDMETHODCALLTYPE put_TwoSided(LONG value) = 0;
    /// \copydoc ZLMIM::Material::Opacity
    virtual HRESULT STDMETHODCALLTYPE get_Opacity(float* value) = 0;
    /// Writes what `get_Opacity` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Opacity(float value) = 0;
    /// \copydoc ZLMIM::Material::SpecularPower
    virtual HRESULT STDMETHODCALLTYPE get_SpecularPower(float* value) = 0;
    /// Writes what `get_SpecularPower` gives.
    virtual HRESULT STDMETHODCALLTYPE put_SpecularPower(float value) = 0;
    /// \copydoc ZLMIM::Material::Textures
    virtual HRESULT STDMETHODCALLTYPE get_Textures(_Collection** value) = 0;
    /// Writes what `get_Textures` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Textures(_Collection* value) = 0;
    /// \copydoc ZLMIM::Material::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::Material::Ambient
    virtual HRESULT STDMETHODCALLTYPE get_Ambient(rgbColour* value) = 0;
    /// Writes what `get_Ambient` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Ambient(rgbColour* value) = 0;
    /// Writes what `get_Diffuse` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Diffuse(rgbColour* value) = 0;
    /// \copydoc ZLMIM::Material::Diffuse
    virtual HRESULT STDMETHODCALLTYPE get_Diffuse(rgbColour* value) = 0;
    /// Writes what `get_Specular` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Specular(rgbColour* value) = 0;
    /// \copydoc ZLMIM::Material::Specular
    virtual HRESULT STDMETHODCALLTYPE get_Specular(rgbColour* value) = 0;
    /// Writes what `get_Emissive` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Emissive(rgbColour* value) = 0;
    /// \copydoc ZLMIM::Material::Emissive
    virtual HRESULT STDMETHODCALLTYPE get_Emissive(rgbColour* value) = 0;
};

/// A `ZLMIM::Geometry` as hosts hold it.
struct _Geometry : IDispatch
{
    /// \copydoc ZLMIM::Geometry::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::Area
    virtual HRESULT STDMETHODCALLTYPE get_Area(float* value) = 0;
    /// Writes what `get_Area` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Area(float value) = 0;
    /// \copydoc ZLMIM::Geometry::FaceNormals
    virtual HRESULT STDMETHODCALLTYPE get_FaceNormals(_Collection** value) = 0;
    /// Writes what `get_FaceNormals` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_FaceNormals(_Collection* value) = 0;
    /// \copydoc ZLMIM::Geometry::PrimitiveCount
    virtual HRESULT STDMETHODCALLTYPE get_PrimitiveCount(LONG* value) = 0;
    /// Writes what `get_PrimitiveCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_PrimitiveCount(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::MaxInfl
    virtual HRESULT STDMETHODCALLTYPE get_MaxInfl(LONG* value) = 0;
    /// Writes what `get_MaxInfl` gives.
    virtual HRESULT STDMETHODCALLTYPE put_MaxInfl(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::PrimitiveType
    virtual HRESULT STDMETHODCALLTYPE get_PrimitiveType(PrimFlag* value) = 0;
    /// Writes what `get_PrimitiveType` gives.
    virtual HRESULT STDMETHODCALLTYPE put_PrimitiveType(PrimFlag value) = 0;
    /// \copydoc ZLMIM::Geometry::Bone
    virtual HRESULT STDMETHODCALLTYPE get_Bone(BSTR* value) = 0;
    /// Writes what `get_Bone` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Bone(BSTR value) = 0;
    /// \copydoc ZLMIM::Geometry::BoneObject
    virtual HRESULT STDMETHODCALLTYPE get_BoneObject(_Bone** value) = 0;
    /// Writes what `get_BoneObject` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_BoneObject(_Bone* value) = 0;
    /// \copydoc ZLMIM::Geometry::MaxVertices
    virtual HRESULT STDMETHODCALLTYPE get_MaxVertices(LONG* value) = 0;
    /// Writes what `get_MaxVertices` gives.
    virtual HRESULT STDMETHODCALLTYPE put_MaxVertices(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::MaxVertNormal
    virtual HRESULT STDMETHODCALLTYPE get_MaxVertNormal(LONG* value) = 0;
    /// Writes what `get_MaxVertNormal` gives.
    virtual HRESULT STDMETHODCALLTYPE put_MaxVertNormal(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::SetVertex
    virtual HRESULT STDMETHODCALLTYPE SetVertex(LONG* index, Vertex* v) = 0;
    /// \copydoc ZLMIM::Geometry::GetVertex
    virtual HRESULT STDMETHODCALLTYPE GetVertex(LONG* index, Vertex* v, VARIANT_BOOL* result) = 0;
    /// \copydoc ZLMIM::Geometry::SetVertexNormal
    virtual HRESULT STDMETHODCALLTYPE SetVertexNormal(LONG* index, Vector* v) = 0;
    /// \copydoc ZLMIM::Geometry::GetVertexNormal
    virtual HRESULT STDMETHODCALLTYPE GetVertexNormal(LONG* index, Vector* v, VARIANT_BOOL* result) = 0;
    /// \copydoc ZLMIM::Geometry::MaxIndex
    virtual HRESULT STDMETHODCALLTYPE get_MaxIndex(LONG* value) = 0;
    /// Writes what `get_MaxIndex` gives.
    virtual HRESULT STDMETHODCALLTYPE put_MaxIndex(LONG value) = 0;
    /// \copydoc ZLMIM::Geometry::SetIndex
    virtual HRESULT STDMETHODCALLTYPE SetIndex(LONG* index, LONG i) = 0;
    /// \copydoc ZLMIM::Geometry::GetIndex
    virtual HRESULT STDMETHODCALLTYPE GetIndex(LONG* index, LONG* result) = 0;
};

/// A `ZLMIM::Texture` as hosts hold it.
struct _Texture : IDispatch
{
    /// \copydoc ZLMIM::Texture::TextureType
    virtual HRESULT STDMETHODCALLTYPE get_TextureType(txtype* value) = 0;
    /// Writes what `get_TextureType` gives.
    virtual HRESULT STDMETHODCALLTYPE put_TextureType(txtype value) = 0;
    /// \copydoc ZLMIM::Texture::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::Texture::Amount
    virtual HRESULT STDMETHODCALLTYPE get_Amount(float* value) = 0;
    /// Writes what `get_Amount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Amount(float value) = 0;
};

/// A `ZLMIM::BoneAnim` as hosts hold it.
struct _BoneAnim : IDispatch
{
    /// \copydoc ZLMIM::BoneAnim::Children
    virtual HRESULT STDMETHODCALLTYPE get_Children(_Collection** value) = 0;
    /// Writes what `get_Children` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Children(_Collection* value) = 0;
    /// \copydoc ZLMIM::BoneAnim::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::BoneAnim::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::BoneAnim::InitFrames
    virtual HRESULT STDMETHODCALLTYPE InitFrames(LONG i) = 0;
    /// \copydoc ZLMIM::BoneAnim::GetFrame
    virtual HRESULT STDMETHODCALLTYPE GetFrame(LONG i, Keyframe* result) = 0;
    /// \copydoc ZLMIM::BoneAnim::SetFrame
    virtual HRESULT STDMETHODCALLTYPE SetFrame(LONG i, Keyframe* k) = 0;
};

/// A `ZLMIM::ZLMModel` as hosts hold it.
struct _ZLMModel : IDispatch
{
    /// \copydoc ZLMIM::ZLMModel::MeshTable
    virtual HRESULT STDMETHODCALLTYPE get_MeshTable(_Collection** value) = 0;
    /// Writes what `get_MeshTable` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_MeshTable(_Collection* value) = 0;
    /// \copydoc ZLMIM::ZLMModel::AssetFileName
    virtual HRESULT STDMETHODCALLTYPE get_AssetFileName(BSTR* value) = 0;
    /// Writes what `get_AssetFileName` gives.
    virtual HRESULT STDMETHODCALLTYPE put_AssetFileName(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Author
    virtual HRESULT STDMETHODCALLTYPE get_Author(BSTR* value) = 0;
    /// Writes what `get_Author` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Author(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::UserName
    virtual HRESULT STDMETHODCALLTYPE get_UserName(BSTR* value) = 0;
    /// Writes what `get_UserName` gives.
    virtual HRESULT STDMETHODCALLTYPE put_UserName(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Kind
    virtual HRESULT STDMETHODCALLTYPE get_Kind(BSTR* value) = 0;
    /// Writes what `get_Kind` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Kind(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Description
    virtual HRESULT STDMETHODCALLTYPE get_Description(BSTR* value) = 0;
    /// Writes what `get_Description` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Description(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::ZLMBuild
    virtual HRESULT STDMETHODCALLTYPE get_ZLMBuild(BSTR* value) = 0;
    /// Writes what `get_ZLMBuild` gives.
    virtual HRESULT STDMETHODCALLTYPE put_ZLMBuild(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Bogies
    virtual HRESULT STDMETHODCALLTYPE get_Bogies(_Collection** value) = 0;
    /// Writes what `get_Bogies` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Bogies(_Collection* value) = 0;
    /// \copydoc ZLMIM::ZLMModel::BogieNames
    virtual HRESULT STDMETHODCALLTYPE get_BogieNames(_Collection** value) = 0;
    /// Writes what `get_BogieNames` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_BogieNames(_Collection* value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Pantograph
    virtual HRESULT STDMETHODCALLTYPE get_Pantograph(_ZLMModel** value) = 0;
    /// Writes what `get_Pantograph` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Pantograph(_ZLMModel* value) = 0;
    /// \copydoc ZLMIM::ZLMModel::kuid
    virtual HRESULT STDMETHODCALLTYPE get_kuid(BSTR* value) = 0;
    /// Writes what `get_kuid` gives.
    virtual HRESULT STDMETHODCALLTYPE put_kuid(BSTR value) = 0;
    /// \copydoc ZLMIM::ZLMModel::Load
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR* ConfigFileName) = 0;
};

/// A `ZLMIM::MeshEntry` as hosts hold it.
struct _MeshEntry : IDispatch
{
    /// \copydoc ZLMIM::MeshEntry::Mesh
    virtual HRESULT STDMETHODCALLTYPE get_Mesh(_Mesh** value) = 0;
    /// Writes what `get_Mesh` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Mesh(_Mesh* value) = 0;
    /// \copydoc ZLMIM::MeshEntry::anim
    virtual HRESULT STDMETHODCALLTYPE get_anim(_anim** value) = 0;
    /// Writes what `get_anim` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_anim(_anim* value) = 0;
    /// \copydoc ZLMIM::MeshEntry::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::MeshEntry::AttParent
    virtual HRESULT STDMETHODCALLTYPE get_AttParent(_MeshEntry** value) = 0;
    /// Writes what `get_AttParent` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_AttParent(_MeshEntry* value) = 0;
    /// \copydoc ZLMIM::MeshEntry::Att
    virtual HRESULT STDMETHODCALLTYPE get_Att(_Attachment** value) = 0;
    /// Writes what `get_Att` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Att(_Attachment* value) = 0;
    /// \copydoc ZLMIM::MeshEntry::Parent
    virtual HRESULT STDMETHODCALLTYPE get_Parent(_ZLMModel** value) = 0;
    /// Writes what `get_Parent` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Parent(_ZLMModel* value) = 0;
    /// \copydoc ZLMIM::MeshEntry::Load
    virtual HRESULT STDMETHODCALLTYPE Load(_ZLMModel** Model, BSTR* sName, BSTR* MeshFile, BSTR* AnimFile, BSTR* AttPar, BSTR* AttName) = 0;
};

/// A `ZLMIM::Mesh` as hosts hold it.
struct _Mesh : IDispatch
{
    /// \copydoc ZLMIM::Mesh::ErrorMessage
    virtual HRESULT STDMETHODCALLTYPE get_ErrorMessage(BSTR* value) = 0;
    /// Writes what `get_ErrorMessage` gives.
    virtual HRESULT STDMETHODCALLTYPE put_ErrorMessage(BSTR value) = 0;
    /// \copydoc ZLMIM::Mesh::ChunkCount
    virtual HRESULT STDMETHODCALLTYPE get_ChunkCount(LONG* value) = 0;
    /// Writes what `get_ChunkCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_ChunkCount(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::FileSize
    virtual HRESULT STDMETHODCALLTYPE get_FileSize(LONG* value) = 0;
    /// Writes what `get_FileSize` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FileSize(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::Attachments
    virtual HRESULT STDMETHODCALLTYPE get_Attachments(_Collection** value) = 0;
    /// Writes what `get_Attachments` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Attachments(_Collection* value) = 0;
    /// \copydoc ZLMIM::Mesh::Chunks
    virtual HRESULT STDMETHODCALLTYPE get_Chunks(_Collection** value) = 0;
    /// Writes what `get_Chunks` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Chunks(_Collection* value) = 0;
    /// \copydoc ZLMIM::Mesh::RootBone
    virtual HRESULT STDMETHODCALLTYPE get_RootBone(_Bone** value) = 0;
    /// Writes what `get_RootBone` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_RootBone(_Bone* value) = 0;
    /// \copydoc ZLMIM::Mesh::AttVersion
    virtual HRESULT STDMETHODCALLTYPE get_AttVersion(LONG* value) = 0;
    /// Writes what `get_AttVersion` gives.
    virtual HRESULT STDMETHODCALLTYPE put_AttVersion(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::Polygons
    virtual HRESULT STDMETHODCALLTYPE get_Polygons(LONG* value) = 0;
    /// Writes what `get_Polygons` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Polygons(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::FileName
    virtual HRESULT STDMETHODCALLTYPE get_FileName(BSTR* value) = 0;
    /// Writes what `get_FileName` gives.
    virtual HRESULT STDMETHODCALLTYPE put_FileName(BSTR value) = 0;
    /// \copydoc ZLMIM::Mesh::Load
    virtual HRESULT STDMETHODCALLTYPE Load(BSTR Name, VARIANT_BOOL* result) = 0;
    /// \copydoc ZLMIM::Mesh::BoneCount
    virtual HRESULT STDMETHODCALLTYPE get_BoneCount(LONG* value) = 0;
    /// Writes what `get_BoneCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_BoneCount(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::VertexCount
    virtual HRESULT STDMETHODCALLTYPE get_VertexCount(LONG* value) = 0;
    /// Writes what `get_VertexCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_VertexCount(LONG value) = 0;
    /// \copydoc ZLMIM::Mesh::TextureCount
    virtual HRESULT STDMETHODCALLTYPE get_TextureCount(LONG* value) = 0;
    /// Writes what `get_TextureCount` gives.
    virtual HRESULT STDMETHODCALLTYPE put_TextureCount(LONG value) = 0;
};

/// A `ZLMIM::Bone` as hosts hold it.
struct _Bone : IDispatch
{
    /// \copydoc ZLMIM::Bone::Children
    virtual HRESULT STDMETHODCALLTYPE get_Children(_Collection** value) = 0;
    /// Writes what `get_Children` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Children(_Collection* value) = 0;
    /// \copydoc ZLMIM::Bone::Name
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* value) = 0;
    /// Writes what `get_Name` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Name(BSTR value) = 0;
    /// \copydoc ZLMIM::Bone::Version
    virtual HRESULT STDMETHODCALLTYPE get_Version(LONG* value) = 0;
    /// Writes what `get_Version` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Version(LONG value) = 0;
    /// \copydoc ZLMIM::Bone::Parent
    virtual HRESULT STDMETHODCALLTYPE get_Parent(_Bone** value) = 0;
    /// Writes what `get_Parent` gives.
    virtual HRESULT STDMETHODCALLTYPE putref_Parent(_Bone* value) = 0;
    /// \copydoc ZLMIM::Bone::Position
    virtual HRESULT STDMETHODCALLTYPE get_Position(Vector* value) = 0;
    /// Writes what `get_Position` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Position(Vector* value) = 0;
    /// \copydoc ZLMIM::Bone::Rotation
    virtual HRESULT STDMETHODCALLTYPE get_Rotation(Quaternion* value) = 0;
    /// Writes what `get_Rotation` gives.
    virtual HRESULT STDMETHODCALLTYPE put_Rotation(Quaternion* value) = 0;
    /// \copydoc ZLMIM::Bone::ToMatrix
    virtual HRESULT STDMETHODCALLTYPE ToMatrix(Matrix* result) = 0;
};

/// @}
/// \cond IDENTIFIERS
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
/// \endcond

} // namespace ZLMIM::Host

#endif
