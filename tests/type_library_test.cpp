#include "component_classes.h"
#include "component_host.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace ZLMIM::Host
{
namespace
{

using namespace ZLMIM::Testing;

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

[[nodiscard]] std::string NameOf(const TYPEDESC& type, const Pointer<ITypeInfo>& info)
{
    switch (type.vt)
    {
    case VT_I4:
        return "long";
    case VT_R4:
        return "float";
    case VT_BOOL:
        return "VARIANT_BOOL";
    case VT_BSTR:
        return "BSTR";
    case VT_PTR:
        return NameOf(*type.lptdesc, info) + "*";
    case VT_USERDEFINED:
    {
        Pointer<ITypeInfo> found;
        EXPECT_EQ(info->GetRefTypeInfo(type.hreftype, found.Out()), S_OK);
        return DocumentationOf(found, -1).name;
    }
    default:
        return "type " + std::to_string(type.vt);
    }
}

/// The member as `ExpectedSlot::text` has it.
[[nodiscard]] std::string SlotText(const Pointer<ITypeInfo>& info, const FUNCDESC& function)
{
    BSTR names[8] = {};
    UINT count = 0;
    EXPECT_EQ(info->GetNames(function.memid, names, 8, &count), S_OK);
    std::vector<std::string> narrow;
    for (UINT i = 0; i < count; ++i)
    {
        const auto wide = Text::Adopt(names[i]).Copy();
        narrow.emplace_back(wide.begin(), wide.end());
    }
    // A property has one id for both its slots, and the library lists no name for the value that is written.
    const bool isMethod = function.invkind == INVOKE_FUNC;
    std::string text = function.invkind == INVOKE_PROPERTYGET      ? "get "
                       : function.invkind == INVOKE_PROPERTYPUT    ? "put "
                       : function.invkind == INVOKE_PROPERTYPUTREF ? "putref "
                                                                   : "";
    text += narrow[0] + "(";
    for (SHORT i = 0; i < function.cParams; ++i)
    {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        const USHORT flags = parameter.paramdesc.wParamFlags;
        const bool isResult = (flags & PARAMFLAG_FRETVAL) != 0;
        text += i > 0 ? ", [" : "[";
        text += (flags & PARAMFLAG_FIN) != 0 ? "in" : "";
        text += (flags & PARAMFLAG_FOUT) != 0 ? ((flags & PARAMFLAG_FIN) != 0 ? ", out" : "out") : "";
        text += isResult ? ", retval" : "";
        text += (flags & ~(PARAMFLAG_FIN | PARAMFLAG_FOUT | PARAMFLAG_FRETVAL)) != 0 ? ", more" : "";
        text += "] " + NameOf(parameter.tdesc, info) + " ";
        const auto place = static_cast<std::size_t>(i) + 1;
        text += !isMethod ? "value" : place < narrow.size() ? narrow[place] : isResult ? "result" : "?";
    }
    return text + ")";
}

TEST(TypeLibrary, DescribesTheLibraryAndItsTypes)
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
    for (const auto& type : kExpectedTypes)
    {
        SCOPED_TRACE(type.name);
        const auto info = TypeOf(type.guid);
        const TYPEATTR found = AttributesOf(info);
        EXPECT_EQ(found.typekind, type.isRecord ? TKIND_RECORD : TKIND_ENUM);
        EXPECT_EQ(found.cbSizeInstance, type.size);
        EXPECT_EQ(DocumentationOf(info, -1).name, type.name);
        EXPECT_EQ(DocumentationOf(info, -1).help, type.help);
        EXPECT_EQ(PartsOf(info, found), type.parts);
    }
}

TEST(TypeLibrary, DescribesTheSlotsOfTheRunningObjects)
{
    constexpr WORD kFlags =
        TYPEFLAG_FHIDDEN | TYPEFLAG_FDUAL | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION;
    for (const ExpectedClass& expected : kExpectedClasses)
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
            EXPECT_EQ(SlotText(slotInfo, *function), slots[i].text);
            EXPECT_EQ(static_cast<std::size_t>(function->oVft), (7 + i) * sizeof(void*)) << found.name;
            EXPECT_EQ(function->memid,
                      IdOf(object.Get(), std::u16string(found.name.begin(), found.name.end())));
            EXPECT_EQ(found.help, HelpOf(expected, found.name)) << found.name;
            slotInfo->ReleaseFuncDesc(function);
        }
        Pointer<ITypeInfo> own;
        ASSERT_EQ(object->GetTypeInfo(0, 0, own.Out()), S_OK);
        EXPECT_EQ(Component::ToString(AttributesOf(own).guid), Component::ToString(expected.interfaceId));
    }
}

TEST(TypeLibrary, HasTheOlderNamesOfMesh)
{
    const auto mesh = New<_Mesh>();
    for (WORD i = 0; i < 3; ++i)
    {
        const auto alias = TypeOf(kOlderMeshIds[i]);
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
        ASSERT_EQ(mesh->QueryInterface(kOlderMeshIds[i], same.OutAny()), S_OK);
        EXPECT_EQ(static_cast<void*>(same.Get()), static_cast<void*>(mesh.Get()));
    }
}

TEST(TypeLibrary, LoadsOnceForAllRecords)
{
    const auto bone = New<_Bone>();
    Variant first;
    Variant second;
    ASSERT_EQ(Call(bone.Get(), u"Position", DISPATCH_PROPERTYGET, {}, &first), S_OK);
    ASSERT_EQ(Call(bone.Get(), u"Position", DISPATCH_PROPERTYGET, {}, &second), S_OK);
    EXPECT_EQ(first.pRecInfo, second.pRecInfo);
}

[[nodiscard]] std::string ResourceBytes(const char* type)
{
    const HRSRC found = ::FindResourceA(Module(), MAKEINTRESOURCEA(1), type);
    if (!found)
        return "none";
    const auto* const bytes = static_cast<const char*>(::LockResource(::LoadResource(Module(), found)));
    return {bytes, ::SizeofResource(Module(), found)};
}

TEST(Module, HasItsResourcesAndExportsFourFunctions)
{
    for (const ExpectedClass& expected : kExpectedClasses)
    {
        std::vector<GUID> ids;
        if (std::string(expected.name) == "Mesh")
            ids.assign(std::begin(kOlderMeshIds), std::end(kOlderMeshIds));
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
