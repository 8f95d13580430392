#include "zlmim/component/generator/generate.h"
#include "zlmim/component/types.h"

namespace ZLMIM::Component
{
namespace
{

/// Declares the system's names that the library needs, which the type-library compiler knows. The two
/// interfaces need all their methods, whose number determines the slots of other interfaces.
constexpr const char* kIdlHead =
    R"(typedef long HRESULT;
typedef short VARIANT_BOOL;
typedef wchar_t *BSTR;
typedef struct tagVARIANT VARIANT;

[object, uuid(00000000-0000-0000-C000-000000000046)]
interface IUnknown { HRESULT QueryInterface(); HRESULT AddRef(); HRESULT Release(); }
[object, uuid(00020400-0000-0000-C000-000000000046)]
interface IDispatch : IUnknown
{ HRESULT GetTypeInfoCount(); HRESULT GetTypeInfo(); HRESULT GetIDsOfNames(); HRESULT Invoke(); }

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

[[nodiscard]] std::string Version(const InterfaceId& id)
{
    return "version(1." + std::to_string(id.minorVersion) + ")";
}

[[nodiscard]] std::string Uuid(const GUID& guid) { return "uuid(" + ToString(guid) + ")"; }

[[nodiscard]] std::string ParameterText(const Parameter& parameter, const std::string& attributes)
{
    std::string type = parameter.type;
    if (parameter.isObject)
        type = "_" + type + "*";
    else if (type == "IUnknown")
        type += "*";
    if (parameter.passing != Passing::In)
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
    text += Help(member.help) + "] HRESULT " + member.name + "(";
    const char* separator = "";
    std::size_t left = member.count;
    for (const Parameter& parameter : member.Parameters())
    {
        const std::string direction = parameter.passing == Passing::InOut ? "in, out" : "in";
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
    std::string text = "typedef [" + Uuid(type.guid) + Help(type.help) + "] enum " + type.name + " {";
    for (const Enumerator& enumerator : type.enumerators)
        text += std::string(" ") + enumerator.name + " = " + std::to_string(enumerator.value) + ",";
    text.back() = ' ';
    return text + "} " + type.name + ";\n";
}

[[nodiscard]] std::string RecordText(const RecordType& type)
{
    std::string text = "typedef [" + Uuid(type.guid) + Help(type.help) + "] struct " + type.name + " {";
    for (const Field& field : type.fields)
        text += std::string(" ") + field.type + " " + field.name + ";";
    return text + " } " + type.name + ";\n";
}

[[nodiscard]] std::string InterfaceText(const ClassInfo& info)
{
    const InterfaceId& own = info.Interface();
    std::string text = "[odl, " + Uuid(own.guid) + ", " + Version(own) +
                       ", hidden, dual, nonextensible, oleautomation]\ninterface " + own.name +
                       " : IDispatch {\n";
    for (const Member& member : info.members)
        text += MemberText(member);
    text += "}\n";
    for (const InterfaceId& older : info.interfaces.first(info.interfaces.size() - 1))
        text += "typedef [" + Uuid(older.guid) + ", " + Version(older) + ", hidden, public] " + own.name +
                " " + older.name + ";\n";
    return text;
}

} // namespace

std::string GenerateIdl()
{
    std::string text = std::string("/* ") + kGenerated + " */\n" + kIdlHead;
    text += "[" + Uuid(kLibrary.guid) + ", version(" + std::to_string(kLibrary.majorVersion) + "." +
            std::to_string(kLibrary.minorVersion) + "), lcid(0x409)" + Help(kLibrary.help) + "]\nlibrary " +
            kLibrary.name + " {\n\nimportlib(\"stdole2.tlb\");\n";
    const auto interfaces = Interfaces();
    for (const ClassInfo* const info : interfaces)
        text += std::string("interface ") + info->Interface().name + "; ";
    text += "\n\n";
    for (const EnumerationType* const type : kEnumerationTypes)
        text += EnumerationText(*type);
    for (const RecordType* const type : kRecordTypes)
        text += RecordText(*type);
    for (const ClassInfo* const info : interfaces)
    {
        text += InterfaceText(*info);
        if (info->create)
            text += "[" + Uuid(info->classId) + ", " + Version(info->Interface()) + Help(info->help) +
                    "]\ncoclass " + info->name + " { [default] interface " + info->Interface().name + "; }\n";
    }
    return text + "}\n";
}

} // namespace ZLMIM::Component
