#include "zlmim/component/generator/generate.h"
#include "zlmim/component/generator/names.h"
#include "zlmim/component/guid_text.h"

namespace ZLMIM::Component
{
namespace
{

/// The few names of the system that the library needs: the compiler of type libraries knows them by name. The
/// numbers of methods of the two interfaces decide the slots of all others.
constexpr const char* kHead =
    R"(/* Made by zlmim_component_files from the tables of the classes: change those. */
typedef long HRESULT;
typedef short VARIANT_BOOL;
typedef wchar_t *BSTR;
typedef struct tagVARIANT VARIANT;

[object, uuid(00000000-0000-0000-C000-000000000046)]
interface IUnknown
{
    HRESULT QueryInterface();
    HRESULT AddRef();
    HRESULT Release();
}

[object, uuid(00020400-0000-0000-C000-000000000046)]
interface IDispatch : IUnknown
{
    HRESULT GetTypeInfoCount();
    HRESULT GetTypeInfo();
    HRESULT GetIDsOfNames();
    HRESULT Invoke();
}

)";

[[nodiscard]] std::string Quoted(const char* text)
{
    std::string quoted = "\"";
    for (; *text; ++text)
        quoted += (*text == '"' ? "\\" : "") + std::string(1, *text);
    return quoted + '"';
}

[[nodiscard]] std::string Help(const char* help)
{
    return help ? ", helpstring(" + Quoted(help) + ")" : std::string();
}

[[nodiscard]] std::string Uuid(const GUID& guid) { return "uuid(" + ToString(guid) + ")"; }

[[nodiscard]] std::string ParameterText(const Parameter& parameter, const std::string& attributes)
{
    std::string type = parameter.type;
    if (parameter.isObject)
        type = "_" + type + "*";
    else if (type == "IUnknown")
        type += "*";
    if (parameter.how != How::In)
        type += "*";
    return "[" + attributes + "] " + type + " " + parameter.name;
}

[[nodiscard]] std::string MemberText(const Member& member)
{
    std::string text = "    [id(" + std::to_string(member.id) + ")";
    if (member.kind == DISPATCH_PROPERTYGET)
        text += ", propget";
    else if (member.kind == DISPATCH_PROPERTYPUT)
        text += ", propput";
    else if (member.kind == DISPATCH_PROPERTYPUTREF)
        text += ", propputref";
    text += Help(member.help) + "]\n    HRESULT " + member.name + "(";
    const char* separator = "";
    std::size_t left = member.count;
    for (const Parameter& parameter : member.Parameters())
    {
        const std::string direction = parameter.how == How::InOut ? "in, out" : "in";
        text += separator +
                ParameterText(parameter, direction + (left-- <= member.optionalCount ? ", optional" : ""));
        separator = ", ";
    }
    if (member.result.type)
        text += separator + ParameterText(member.result, "out, retval");
    return text + ");\n";
}

[[nodiscard]] std::string EnumerationText(const EnumerationType& type)
{
    std::string text = "typedef [" + Uuid(type.guid) + Help(type.help) + "] enum " + type.name + "\n{\n";
    for (const Enumerator& enumerator : type.enumerators)
        text += std::string("    ") + enumerator.name + " = " + std::to_string(enumerator.value) + ",\n";
    text.replace(text.size() - 2, 1, "");
    return text + "} " + type.name + ";\n\n";
}

[[nodiscard]] std::string RecordText(const RecordType& type)
{
    std::string text = "typedef [" + Uuid(type.guid) + Help(type.help) + "] struct " + type.name + "\n{\n";
    for (const Field& field : type.fields)
        text += std::string("    ") + field.type + " " + field.name + ";\n";
    return text + "} " + type.name + ";\n\n";
}

[[nodiscard]] std::string InterfaceText(const ClassInfo& info)
{
    const InterfaceId& own = info.Interface();
    std::string text = "[odl, " + Uuid(own.guid) + ", version(" + Version(own) +
                       "), hidden, dual, nonextensible, oleautomation]\ninterface " + own.name +
                       " : IDispatch\n{\n";
    for (const Member& member : info.members)
        text += MemberText(member);
    text += "}\n\n";
    for (const InterfaceId& older : info.interfaces.first(info.interfaces.size() - 1))
        text += "typedef [" + Uuid(older.guid) + ", version(" + Version(older) + "), hidden, public] " +
                own.name + " " + older.name + ";\n\n";
    return text;
}

} // namespace

std::string GenerateIdl()
{
    std::string text = kHead;
    text += "[" + Uuid(kLibrary.guid) + ", version(" + std::to_string(kLibrary.majorVersion) + "." +
            std::to_string(kLibrary.minorVersion) + "), lcid(0x409)" + Help(kLibrary.help) + "]\nlibrary " +
            kLibrary.name + "\n{\n\nimportlib(\"stdole2.tlb\");\n\n";
    const auto interfaces = Interfaces();
    for (const ClassInfo* const info : interfaces)
        text += std::string("interface ") + info->Interface().name + ";\n";
    text += "\n";
    for (const EnumerationType* const type : kEnumerationTypes)
        text += EnumerationText(*type);
    for (const RecordType* const type : kRecordTypes)
        text += RecordText(*type);
    for (const ClassInfo* const info : interfaces)
    {
        text += InterfaceText(*info);
        if (info->create)
            text += "[" + Uuid(info->classId) + ", version(" + Version(info->Interface()) + ")" +
                    Help(info->help) + "]\ncoclass " + info->name + "\n{\n    [default] interface " +
                    info->Interface().name + ";\n}\n\n";
    }
    return text + "}\n";
}

} // namespace ZLMIM::Component
