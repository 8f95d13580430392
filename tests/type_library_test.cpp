#include "component_host.h"
#include "zlmim/component/guid.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace ZLMIM::Host
{
namespace
{

/// A class as its hosts know it. Members stand in the order of their slots: a bare name is a property that is
/// read before it is written, "~" one that is written first, "!" a method.
struct ExpectedClass
{
    const char* name;
    GUID classId;
    GUID interfaceId;
    const char* help;
    const char* members;
};

using Component::ParseGuid;

constexpr const char* kMeshHelp = "The object representing an IM file from ZLM";
constexpr const char* kBoneHelp = "Bone object used by animated meshes";
constexpr const char* kGeometryHelp = "All the points, normals and face definitions";

constexpr ExpectedClass kClasses[] = {
    {"anim", ParseGuid("DF1AD90E-EBD4-4BBF-8DEF-55B7DD3D9BB4"),
     ParseGuid("8CA1AFC4-963D-4111-912E-ED20800DE670"), kMeshHelp,
     "ErrorMessage FrameCount FPS Version MetScale Name FileSize RootBone FileName !Load"},
    {"Attachment", ParseGuid("1420EE45-71E3-4AB1-8819-4F1FBE6439DD"),
     ParseGuid("30E49CD5-F82D-4ABE-A3A4-3EA91B6E75D7"), "ZLM Attachment point definition",
     "Version Name Matrix"},
    {"Chunk", ParseGuid("AAE8BE13-C65E-4DCA-86E0-6EB02F0169E3"),
     ParseGuid("5AB1D67C-2E99-4E4A-856D-AF147F91D608"), "The material and geometry for part of the mesh",
     "Material Geometry Version Id"},
    {"Material", ParseGuid("53ED60C5-839C-45B7-8475-FA37BF611D27"),
     ParseGuid("32749DEA-FB00-44D6-9676-9EFA99D54657"), "Material used by a chunk",
     "Version NumProperties TwoSided Opacity SpecularPower Textures Name Ambient ~Diffuse ~Specular "
     "~Emissive"},
    {"Geometry", ParseGuid("82012617-A6B0-4C04-B9E6-E47327ECFDD8"),
     ParseGuid("DE26527F-A37B-4FF5-831D-E36F575C80E4"), kGeometryHelp,
     "Version Area FaceNormals PrimitiveCount MaxInfl PrimitiveType Bone BoneObject MaxVertices "
     "MaxVertNormal "
     "!SetVertex !GetVertex !SetVertexNormal !GetVertexNormal MaxIndex !SetIndex !GetIndex"},
    {"Texture", ParseGuid("B11F155D-9B04-4C00-857B-C8902EF329C6"),
     ParseGuid("1E9A2082-879C-428A-B726-FE65F2B92EA1"), "", "TextureType Name Amount"},
    {"BoneAnim", ParseGuid("ED5B541C-FEBF-43AA-A8D5-33372B88BFC5"),
     ParseGuid("6A0629D7-A83A-494D-88E2-EBDB23345A6F"), kBoneHelp,
     "Children Name Version !InitFrames !GetFrame !SetFrame"},
    {"ZLMModel", ParseGuid("EA4DAF51-E7AC-4BED-8395-E29AD2C93E1F"),
     ParseGuid("A83B6793-68EE-4E0E-A23C-4D656B037322"), "The object representing a CONFIG.TXT file from ZLM",
     "MeshTable AssetFileName Author UserName Kind Description ZLMBuild Bogies BogieNames Pantograph kuid "
     "!Load"},
    {"MeshEntry", ParseGuid("A82C949E-A450-47AF-A52E-D44800E70FFA"),
     ParseGuid("F378CA53-C077-487F-A055-F7ED91947255"), "", "Mesh anim Name AttParent Att Parent !Load"},
    {"Mesh", ParseGuid("5EC8E051-39D2-469F-AD68-CEEC1A0E7729"),
     ParseGuid("025B8DCE-CDF1-40E6-8510-776E3D2DF24C"), kMeshHelp,
     "ErrorMessage ChunkCount Version FileSize Attachments Chunks RootBone AttVersion Polygons FileName "
     "!Load "
     "BoneCount VertexCount TextureCount"},
    {"Bone", ParseGuid("93EA3F7B-D773-40A5-A5EC-714D91248041"),
     ParseGuid("B8C0DE3C-1C82-4C2B-AFB7-820026A49CDE"), kBoneHelp,
     "Children Name Version Parent Position Rotation !ToMatrix"}};

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

constexpr struct
{
    const char* name;
    GUID guid;
    const char* help;
    TYPEKIND kind;
    unsigned size;
    const char* parts;
} kTypes[] = {
    {"PrimFlag", ParseGuid("2A8932AF-6CF4-487E-BA0B-0568FA902E76"), kGeometryHelp, TKIND_ENUM, 4,
     "NONE=0 POINTS=1 LINES=2 LINE_STRIP=3 TRIANGLES=4 TRI_STRIP=5 TRI_FAN=6 "},
    {"txtype", ParseGuid("781BD505-4624-46DB-8EB0-213B0B05353A"), "", TKIND_ENUM, 4,
     "TEX_Ambient=0 TEX_Diffuse=1 TEX_Specular=2 TEX_Shine=3 TEX_Shinestrength=4 TEX_Selfillum=5 "
     "TEX_Opacity=6 "
     "TEX_Filtercolor=7 TEX_Bump=8 TEX_Reflect=9 TEX_Refract=10 TEX_Displacement=11 TEX_NumtypeS=12 "},
    {"Keyframe", ParseGuid("187F3144-356A-4D97-B0C7-03E8B9F2D47F"), kBoneHelp, TKIND_RECORD, 28, "p=0 q=12 "},
    {"Matrix", ParseGuid("BFC644EC-FA94-46E8-9076-C5EA9651DBF8"), kMeshHelp, TKIND_RECORD, 48,
     "m11=0 m12=4 m13=8 m21=12 m22=16 m23=20 m31=24 m32=28 m33=32 m41=36 m42=40 m43=44 "},
    {"rgbColour", ParseGuid("14C28BAB-4DCC-47CD-8963-AE59C295383A"), kMeshHelp, TKIND_RECORD, 12,
     "r=0 g=4 b=8 "},
    {"Vector", ParseGuid("754C16C7-A067-4125-BBB2-0249B3850BB6"), kMeshHelp, TKIND_RECORD, 12,
     "x=0 y=4 z=8 "},
    {"Quaternion", ParseGuid("51054D8D-23A6-4E00-A96F-54CACBDA9620"), kMeshHelp, TKIND_RECORD, 16,
     "x=0 y=4 z=8 w=12 "},
    {"Vertex", ParseGuid("7D42C12C-5A5D-4B78-BEB4-6FB5D002E477"), kMeshHelp, TKIND_RECORD, 20,
     "x=0 y=4 z=8 u=12 v=16 "}};

[[nodiscard]] HMODULE Module()
{
    static_cast<void>(ClassObjects());
    return ::GetModuleHandleA(ZLMIM_MODULE);
}

[[nodiscard]] Pointer<ITypeLib> Library()
{
    Pointer<ITypeLib> library;
    EXPECT_EQ(::LoadTypeLibEx(L"" ZLMIM_MODULE, REGKIND_NONE, library.Out()), S_OK);
    return library;
}

struct Documentation
{
    std::string name;
    std::string help;
};

template <class T>
[[nodiscard]] Documentation DocumentationOf(const Pointer<T>& info, long member)
{
    Text name;
    Text help;
    EXPECT_EQ(info->GetDocumentation(member, name.Out(), help.Out(), nullptr, nullptr), S_OK);
    const auto narrow = [](const std::u16string& text) { return std::string(text.begin(), text.end()); };
    return {narrow(name.Copy()), narrow(help.Copy())};
}

[[nodiscard]] TYPEATTR AttributesOf(const Pointer<ITypeInfo>& info)
{
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const TYPEATTR copy = *attributes;
    info->ReleaseTypeAttr(attributes);
    return copy;
}

[[nodiscard]] Pointer<ITypeInfo> TypeOf(const GUID& guid)
{
    Pointer<ITypeInfo> info;
    EXPECT_EQ(Library()->GetTypeInfoOfGuid(guid, info.Out()), S_OK) << Component::ToString(guid);
    return info;
}

/// Name and value of each enumerator, or name and place of each field.
[[nodiscard]] std::string PartsOf(const Pointer<ITypeInfo>& info, const TYPEATTR& attributes)
{
    std::ostringstream text;
    for (UINT i = 0; i < attributes.cVars; ++i)
    {
        VARDESC* variable = nullptr;
        EXPECT_EQ(info->GetVarDesc(i, &variable), S_OK);
        text << DocumentationOf(info, variable->memid).name << '='
             << (attributes.typekind == TKIND_ENUM ? variable->lpvarValue->lVal : variable->oInst) << ' ';
        info->ReleaseVarDesc(variable);
    }
    return text.str();
}

struct Slot
{
    std::string name;
    INVOKEKIND kind;
};

[[nodiscard]] std::vector<Slot> SlotsOf(const ExpectedClass& expected)
{
    std::vector<Slot> slots;
    std::istringstream members(expected.members);
    for (std::string name; members >> name;)
    {
        const auto isObject = [&](const char* property)
        { return (std::string(" ") + property + " ").find(" " + name + " ") != std::string::npos; };
        const bool isList =
            isObject("Attachments Chunks RootBone Material Geometry Textures FaceNormals BoneObject "
                     "Children MeshTable Bogies BogieNames Pantograph Mesh anim AttParent Att Parent");
        const INVOKEKIND put = isList ? INVOKE_PROPERTYPUTREF : INVOKE_PROPERTYPUT;
        if (name[0] == '!')
            slots.push_back({name.substr(1), INVOKE_FUNC});
        else if (name[0] == '~')
            slots.insert(slots.end(), {{name.substr(1), put}, {name.substr(1), INVOKE_PROPERTYGET}});
        else
            slots.insert(slots.end(), {{name, INVOKE_PROPERTYGET}, {name, put}});
    }
    return slots;
}

TEST(TypeLibrary, TellsTheLibraryAndItsTypes)
{
    const auto library = Library();
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(Component::ToString(attributes->guid), "C0809775-1978-4774-BA3F-7A1E622C8515");
    EXPECT_EQ(attributes->wMajorVerNum, 20);
    EXPECT_EQ(attributes->wMinorVerNum, 1);
    EXPECT_EQ(attributes->lcid, 0x409U);
    library->ReleaseTLibAttr(attributes);
    EXPECT_EQ(DocumentationOf(library, -1).name, "ZLMIM");
    EXPECT_EQ(DocumentationOf(library, -1).help, "ZLM IM file Functions");
    for (const auto& type : kTypes)
    {
        SCOPED_TRACE(type.name);
        const auto info = TypeOf(type.guid);
        const TYPEATTR found = AttributesOf(info);
        EXPECT_EQ(found.typekind, type.kind);
        EXPECT_EQ(found.cbSizeInstance, type.size);
        EXPECT_EQ(DocumentationOf(info, -1).name, type.name);
        EXPECT_EQ(DocumentationOf(info, -1).help, type.help);
        EXPECT_EQ(PartsOf(info, found), type.parts);
    }
}

TEST(TypeLibrary, TellsTheSlotsOfTheRunningObjects)
{
    constexpr WORD kFlags =
        TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION;
    for (const ExpectedClass& expected : kClasses)
    {
        SCOPED_TRACE(expected.name);
        const WORD minor = std::string(expected.name) == "Mesh" ? 3 : 0;
        const auto coclass = TypeOf(expected.classId);
        const TYPEATTR classAttributes = AttributesOf(coclass);
        EXPECT_EQ(classAttributes.typekind, TKIND_COCLASS);
        EXPECT_EQ(classAttributes.wTypeFlags & (TYPEFLAG_FCANCREATE | TYPEFLAG_FHIDDEN), TYPEFLAG_FCANCREATE);
        EXPECT_EQ(classAttributes.wMinorVerNum, minor);
        EXPECT_EQ(DocumentationOf(coclass, -1).name, expected.name);
        EXPECT_EQ(DocumentationOf(coclass, -1).help, expected.help);

        const auto dispatch = TypeOf(expected.interfaceId);
        EXPECT_EQ(DocumentationOf(dispatch, -1).name, std::string("_") + expected.name);
        EXPECT_EQ(AttributesOf(dispatch).wMinorVerNum, minor);
        HREFTYPE reference = 0;
        Pointer<ITypeInfo> slotInfo;
        ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
        ASSERT_EQ(dispatch->GetRefTypeInfo(reference, slotInfo.Out()), S_OK);
        EXPECT_EQ(AttributesOf(slotInfo).wTypeFlags & kFlags, kFlags);

        Pointer<IClassFactory> factory;
        ASSERT_EQ(ClassObjects()(expected.classId, Component::kIClassFactory, factory.OutAny()), S_OK);
        Pointer<IDispatch> object;
        ASSERT_EQ(factory->CreateInstance(nullptr, expected.interfaceId, object.OutAny()), S_OK);
        const auto slots = SlotsOf(expected);
        ASSERT_EQ(AttributesOf(slotInfo).cFuncs, slots.size());
        for (UINT i = 0; i < slots.size(); ++i)
        {
            FUNCDESC* function = nullptr;
            ASSERT_EQ(slotInfo->GetFuncDesc(i, &function), S_OK);
            const Documentation found = DocumentationOf(slotInfo, function->memid);
            EXPECT_EQ(found.name, slots[i].name);
            EXPECT_EQ(function->invkind, slots[i].kind) << found.name;
            EXPECT_EQ(static_cast<std::size_t>(function->oVft), (7 + i) * sizeof(void*)) << found.name;
            EXPECT_EQ(function->memid,
                      IdOf(object.Get(), std::u16string(found.name.begin(), found.name.end())));
            std::string help;
            for (const auto& documented : kMemberHelps)
            {
                if (documented.member == expected.name + ("." + found.name))
                    help = documented.help;
            }
            EXPECT_EQ(found.help, help) << found.name;
            slotInfo->ReleaseFuncDesc(function);
        }
        Pointer<ITypeInfo> own;
        ASSERT_EQ(object->GetTypeInfo(0, 0, own.Out()), S_OK);
        EXPECT_EQ(Component::ToString(AttributesOf(own).guid), Component::ToString(expected.interfaceId));
    }
}

TEST(TypeLibrary, KeepsTheEarlierNamesOfMesh)
{
    constexpr GUID kOlder[] = {ParseGuid("8FEEE349-8D59-450E-87CE-ECA64FC6C4CB"),
                               ParseGuid("DD46449E-A679-4698-B9EF-B60BD99D5B75"),
                               ParseGuid("CFFD6A3F-A7C6-4CBC-B3B4-14A0ED3D03D8")};
    const auto mesh = New<_Mesh>();
    for (WORD i = 0; i < 3; ++i)
    {
        const auto alias = TypeOf(kOlder[i]);
        const TYPEATTR attributes = AttributesOf(alias);
        EXPECT_EQ(attributes.typekind, TKIND_ALIAS);
        EXPECT_EQ(attributes.wMajorVerNum, 1);
        EXPECT_EQ(attributes.wMinorVerNum, i);
        EXPECT_NE(attributes.wTypeFlags & TYPEFLAG_FHIDDEN, 0);
        EXPECT_EQ(DocumentationOf(alias, -1).name, "Mesh___v" + std::to_string(i));
        Pointer<ITypeInfo> target;
        ASSERT_EQ(alias->GetRefTypeInfo(attributes.tdescAlias.hreftype, target.Out()), S_OK);
        EXPECT_EQ(DocumentationOf(target, -1).name, "_Mesh");
        Pointer<IUnknown> same;
        ASSERT_EQ(mesh->QueryInterface(kOlder[i], same.OutAny()), S_OK);
        EXPECT_EQ(static_cast<void*>(same.Get()), static_cast<void*>(mesh.Get()));
    }
}

[[nodiscard]] std::string ResourceBytes(const char* type)
{
    const HRSRC found = ::FindResourceA(Module(), MAKEINTRESOURCEA(1), type);
    if (!found)
        return "none";
    const auto* const bytes = static_cast<const char*>(::LockResource(::LoadResource(Module(), found)));
    return {bytes, ::SizeofResource(Module(), found)};
}

TEST(Module, CarriesItsResourcesAndExportsFourFunctions)
{
    for (const ExpectedClass& expected : kClasses)
    {
        std::vector<GUID> ids;
        if (std::string(expected.name) == "Mesh")
            ids = {ParseGuid("8FEEE349-8D59-450E-87CE-ECA64FC6C4CB"),
                   ParseGuid("DD46449E-A679-4698-B9EF-B60BD99D5B75"),
                   ParseGuid("CFFD6A3F-A7C6-4CBC-B3B4-14A0ED3D03D8")};
        ids.push_back(expected.interfaceId);
        const auto size = static_cast<LONG>(ids.size() * sizeof(GUID));
        std::string bytes(reinterpret_cast<const char*>(&size), sizeof(size));
        bytes.append(reinterpret_cast<const char*>(ids.data()), ids.size() * sizeof(GUID));
        std::string type = "_IID_";
        for (const char* c = expected.name; *c; ++c)
            type += static_cast<char>(std::toupper(*c));
        EXPECT_EQ(ResourceBytes(type.c_str()), bytes) << type;
    }
    const std::string version = ResourceBytes(MAKEINTRESOURCEA(16));
    std::string narrow;
    for (std::size_t i = 0; i + 1 < version.size(); i += 2)
        narrow += version[i];
    EXPECT_NE(narrow.find("OLESelfRegister"), std::string::npos);
    EXPECT_NE(narrow.find("1.01.0031"), std::string::npos);
    EXPECT_NE(version.find(std::string("\x01\0\x01\0\x1F\0\0\0\x01\0\x01\0\x1F\0\0\0", 16)),
              std::string::npos);

    int ordinal = 0;
    for (const char* const name :
         {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"})
    {
        const auto byNumber = ::GetProcAddress(Module(), MAKEINTRESOURCEA(++ordinal));
        EXPECT_NE(byNumber, nullptr) << name;
        EXPECT_EQ(::GetProcAddress(Module(), name), byNumber);
    }
    EXPECT_EQ(::GetProcAddress(Module(), MAKEINTRESOURCEA(5)), nullptr);
}

} // namespace
} // namespace ZLMIM::Host
