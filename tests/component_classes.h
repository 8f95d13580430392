#pragma once

#include "zlmim/component/guid.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// The classes as hosts know them, written by hand. Tests compare the component's tables and the type library
/// with them.
namespace ZLMIM::Testing
{

struct ExpectedClass
{
    const char* name;
    GUID classId;
    GUID interfaceId;
    const char* help;
    /// Members in the order of their slots, separated by semicolons: "TYPE NAME" for a property, "~" before
    /// it if it is written first, or a method as the type library describes it.
    const char* members;
};

using Component::ParseGuid;

// clang-format off
constexpr const char* kMeshHelp = "The object representing an IM file from ZLM";
constexpr const char* kBoneHelp = "Bone object used by animated meshes";
constexpr const char* kGeometryHelp = "All the points, normals and face definitions";

constexpr ExpectedClass kExpectedClasses[] = {
    {"anim", ParseGuid("DF1AD90E-EBD4-4BBF-8DEF-55B7DD3D9BB4"), ParseGuid("8CA1AFC4-963D-4111-912E-ED20800DE670"), kMeshHelp,
     "BSTR ErrorMessage; long FrameCount; long FPS; long Version; float MetScale; BSTR Name; long FileSize; "
     "_BoneAnim* RootBone; BSTR FileName; Load([in] BSTR Name, [out, retval] VARIANT_BOOL* result)"},
    {"Attachment", ParseGuid("1420EE45-71E3-4AB1-8819-4F1FBE6439DD"), ParseGuid("30E49CD5-F82D-4ABE-A3A4-3EA91B6E75D7"),
     "ZLM Attachment point definition", "long Version; BSTR Name; Matrix Matrix"},
    {"Chunk", ParseGuid("AAE8BE13-C65E-4DCA-86E0-6EB02F0169E3"), ParseGuid("5AB1D67C-2E99-4E4A-856D-AF147F91D608"),
     "The material and geometry for part of the mesh", "_Material* Material; _Geometry* Geometry; long Version; long Id"},
    {"Material", ParseGuid("53ED60C5-839C-45B7-8475-FA37BF611D27"), ParseGuid("32749DEA-FB00-44D6-9676-9EFA99D54657"),
     "Material used by a chunk",
     "long Version; long NumProperties; long TwoSided; float Opacity; float SpecularPower; "
     "_Collection* Textures; BSTR Name; rgbColour Ambient; ~rgbColour Diffuse; ~rgbColour Specular; ~rgbColour Emissive"},
    {"Geometry", ParseGuid("82012617-A6B0-4C04-B9E6-E47327ECFDD8"), ParseGuid("DE26527F-A37B-4FF5-831D-E36F575C80E4"), kGeometryHelp,
     "long Version; float Area; _Collection* FaceNormals; long PrimitiveCount; long MaxInfl; PrimFlag PrimitiveType; "
     "BSTR Bone; _Bone* BoneObject; long MaxVertices; long MaxVertNormal; "
     "SetVertex([in] long* index, [in] Vertex* v); "
     "GetVertex([in] long* index, [in, out] Vertex* v, [out, retval] VARIANT_BOOL* result); "
     "SetVertexNormal([in] long* index, [in] Vector* v); "
     "GetVertexNormal([in] long* index, [in, out] Vector* v, [out, retval] VARIANT_BOOL* result); "
     "long MaxIndex; SetIndex([in] long* index, [in] long i); GetIndex([in] long* index, [out, retval] long* result)"},
    {"Texture", ParseGuid("B11F155D-9B04-4C00-857B-C8902EF329C6"), ParseGuid("1E9A2082-879C-428A-B726-FE65F2B92EA1"), "",
     "txtype TextureType; BSTR Name; float Amount"},
    {"BoneAnim", ParseGuid("ED5B541C-FEBF-43AA-A8D5-33372B88BFC5"), ParseGuid("6A0629D7-A83A-494D-88E2-EBDB23345A6F"), kBoneHelp,
     "_Collection* Children; BSTR Name; long Version; InitFrames([in] long i); "
     "GetFrame([in] long i, [out, retval] Keyframe* result); SetFrame([in] long i, [in] Keyframe* k)"},
    {"ZLMModel", ParseGuid("EA4DAF51-E7AC-4BED-8395-E29AD2C93E1F"), ParseGuid("A83B6793-68EE-4E0E-A23C-4D656B037322"),
     "The object representing a CONFIG.TXT file from ZLM",
     "_Collection* MeshTable; BSTR AssetFileName; BSTR Author; BSTR UserName; BSTR Kind; BSTR Description; BSTR ZLMBuild; "
     "_Collection* Bogies; _Collection* BogieNames; _ZLMModel* Pantograph; BSTR kuid; Load([in] BSTR* ConfigFileName)"},
    {"MeshEntry", ParseGuid("A82C949E-A450-47AF-A52E-D44800E70FFA"), ParseGuid("F378CA53-C077-487F-A055-F7ED91947255"), "",
     "_Mesh* Mesh; _anim* anim; BSTR Name; _MeshEntry* AttParent; _Attachment* Att; _ZLMModel* Parent; "
     "Load([in] _ZLMModel** Model, [in] BSTR* sName, [in] BSTR* MeshFile, [in] BSTR* AnimFile, [in, out] BSTR* AttPar, "
     "[in, out] BSTR* AttName)"},
    {"Mesh", ParseGuid("5EC8E051-39D2-469F-AD68-CEEC1A0E7729"), ParseGuid("025B8DCE-CDF1-40E6-8510-776E3D2DF24C"), kMeshHelp,
     "BSTR ErrorMessage; long ChunkCount; long Version; long FileSize; _Collection* Attachments; _Collection* Chunks; "
     "_Bone* RootBone; long AttVersion; long Polygons; BSTR FileName; "
     "Load([in] BSTR Name, [out, retval] VARIANT_BOOL* result); long BoneCount; long VertexCount; long TextureCount"},
    {"Bone", ParseGuid("93EA3F7B-D773-40A5-A5EC-714D91248041"), ParseGuid("B8C0DE3C-1C82-4C2B-AFB7-820026A49CDE"), kBoneHelp,
     "_Collection* Children; BSTR Name; long Version; _Bone* Parent; Vector Position; Quaternion Rotation; "
     "ToMatrix([out, retval] Matrix* result)"}};

constexpr GUID kOlderMeshIds[] = {ParseGuid("8FEEE349-8D59-450E-87CE-ECA64FC6C4CB"),
                                  ParseGuid("DD46449E-A679-4698-B9EF-B60BD99D5B75"),
                                  ParseGuid("CFFD6A3F-A7C6-4CBC-B3B4-14A0ED3D03D8")};

/// Help texts of members that have one.
constexpr struct
{
    const char* member;
    const char* help;
} kMemberHelps[] = {
    {"anim.ErrorMessage", "Text if Load() fails"},
    {"Mesh.ErrorMessage", "Text if Load() fails"},
    {"Attachment.Version", "Normally 100"},
    {"Attachment.Matrix", "4x3 matrix for rotation/position of the attachment"},
    {"Material.NumProperties", "usually 0"},
    {"Material.Name", "The text after the \"m.\" in the name determines the rendering method used."},
    {"Texture.Amount", "Influence over the material as a whole."},
    {"BoneAnim.Children", "Child Bone Objects"},
    {"Bone.Children", "Child Bone Objects"},
    {"ZLMModel.MeshTable", "A list of MeshEntry objects"},
    {"ZLMModel.Load", "Load up the Config File"},
    {"Mesh.Attachments", "All Attachment type objects in the mesh. "},
    {"Mesh.Chunks", "A collection of Chunk Objects that make up the mesh."},
    {"Mesh.Polygons", "Number of triangles in the whole mesh"}};

/// Enumerations with their values, records with the offsets of their fields.
constexpr struct
{
    const char* name;
    GUID guid;
    const char* help;
    bool isRecord;
    unsigned size;
    const char* parts;
} kExpectedTypes[] = {
    {"PrimFlag", ParseGuid("2A8932AF-6CF4-487E-BA0B-0568FA902E76"), kGeometryHelp, false, 4,
     "NONE=0 POINTS=1 LINES=2 LINE_STRIP=3 TRIANGLES=4 TRI_STRIP=5 TRI_FAN=6 "},
    {"txtype", ParseGuid("781BD505-4624-46DB-8EB0-213B0B05353A"), "", false, 4,
     "TEX_Ambient=0 TEX_Diffuse=1 TEX_Specular=2 TEX_Shine=3 TEX_Shinestrength=4 TEX_Selfillum=5 TEX_Opacity=6 "
     "TEX_Filtercolor=7 TEX_Bump=8 TEX_Reflect=9 TEX_Refract=10 TEX_Displacement=11 TEX_NumtypeS=12 "},
    {"Keyframe", ParseGuid("187F3144-356A-4D97-B0C7-03E8B9F2D47F"), kBoneHelp, true, 28, "p=0 q=12 "},
    {"Matrix", ParseGuid("BFC644EC-FA94-46E8-9076-C5EA9651DBF8"), kMeshHelp, true, 48,
     "m11=0 m12=4 m13=8 m21=12 m22=16 m23=20 m31=24 m32=28 m33=32 m41=36 m42=40 m43=44 "},
    {"rgbColour", ParseGuid("14C28BAB-4DCC-47CD-8963-AE59C295383A"), kMeshHelp, true, 12, "r=0 g=4 b=8 "},
    {"Vector", ParseGuid("754C16C7-A067-4125-BBB2-0249B3850BB6"), kMeshHelp, true, 12, "x=0 y=4 z=8 "},
    {"Quaternion", ParseGuid("51054D8D-23A6-4E00-A96F-54CACBDA9620"), kMeshHelp, true, 16, "x=0 y=4 z=8 w=12 "},
    {"Vertex", ParseGuid("7D42C12C-5A5D-4B78-BEB4-6FB5D002E477"), kMeshHelp, true, 20, "x=0 y=4 z=8 u=12 v=16 "}};
// clang-format on

/// One slot after those of `IDispatch`.
struct ExpectedSlot
{
    /// Such as "get Name([out, retval] BSTR* value)".
    std::string text;
    std::string name;
    /// Empty for a method.
    std::string propertyType;
    bool isGet;
    int id;
};

[[nodiscard]] inline std::vector<ExpectedSlot> SlotsOf(const ExpectedClass& expected)
{
    std::vector<ExpectedSlot> slots;
    std::istringstream members(expected.members);
    for (std::string member; std::getline(members >> std::ws, member, ';');)
    {
        const int id = static_cast<int>(slots.size()) + 7;
        if (const std::size_t end = member.find('('); end != std::string::npos)
        {
            slots.push_back({member, member.substr(0, end), "", false, id});
            continue;
        }
        const bool isPutFirst = member[0] == '~';
        const std::string type = member.substr(isPutFirst, member.find(' ') - isPutFirst);
        const std::string name = member.substr(member.find(' ') + 1);
        const bool isRecord =
            std::any_of(std::begin(kExpectedTypes), std::end(kExpectedTypes),
                        [&](const auto& each) { return each.isRecord && type == each.name; });
        const std::string put = type.back() == '*' ? "putref " : "put ";
        slots.push_back({"get " + name + "([out, retval] " + type + "* value)", name, type, true, id});
        slots.push_back(
            {put + name + "([in] " + type + (isRecord ? "* value)" : " value)"), name, type, false, id});
        if (isPutFirst)
            std::swap(slots.back(), *(slots.end() - 2));
    }
    return slots;
}

[[nodiscard]] inline std::string HelpOf(const ExpectedClass& expected, const std::string& member)
{
    for (const auto& documented : kMemberHelps)
    {
        if (documented.member == expected.name + ("." + member))
            return documented.help;
    }
    return "";
}

} // namespace ZLMIM::Testing
