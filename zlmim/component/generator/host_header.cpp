#include "zlmim/component/generator/generate.h"
#include "zlmim/component/generator/names.h"
#include "zlmim/component/guid_text.h"

#include <string_view>

namespace ZLMIM::Component
{
namespace
{

constexpr const char* kHead =
    R"(// Made by zlmim_component_files from the tables of the classes: change those.
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

)";

[[nodiscard]] std::string TypeOf(const Parameter& parameter)
{
    std::string type = parameter.type;
    if (parameter.isObject)
        type = "_" + type + "*";
    else if (type == "long")
        type = "LONG";
    else if (type == "IUnknown")
        type = "IUnknown*";
    return parameter.how == How::In ? type : type + "*";
}

/// Comments say how an argument by reference is used where its type doesn't.
[[nodiscard]] std::string ArgumentsOf(const Member& member)
{
    std::string text;
    const auto put = [&](const Parameter& parameter)
    {
        text += text.empty() ? "" : ", ";
        text += TypeOf(parameter) + " " + parameter.name;
    };
    for (const Parameter& parameter : member.Parameters())
        put(parameter);
    if (member.result.type)
        put(member.result);
    return text;
}

[[nodiscard]] std::string NameOf(const Member& member)
{
    const char* const prefix = member.kind == DISPATCH_PROPERTYGET      ? "get_"
                               : member.kind == DISPATCH_PROPERTYPUT    ? "put_"
                               : member.kind == DISPATCH_PROPERTYPUTREF ? "putref_"
                                                                        : "";
    return std::string(prefix) + member.name;
}

/// The class of the model whose members an interface has.
[[nodiscard]] std::string ModelClass(const ClassInfo& info)
{
    const std::string name = info.name;
    return "ZLMIM::" + (name == "anim" ? "Anim" : name);
}

/// What a member does is told once, at the class of the model; but lists of the model have no keys to refuse.
[[nodiscard]] std::string CommentOf(const ClassInfo& info, const Member& member)
{
    const std::string name = member.name;
    if (member.kind == DISPATCH_PROPERTYPUT || member.kind == DISPATCH_PROPERTYPUTREF)
        return "Writes what `get_" + name + "` gives.";
    if (!info.create && name == "Add")
        return "Appends a copy of `Item`, or a reference to it, which must be what the list holds. The rest "
               "must be left out.";
    if (!info.create && name == "_NewEnum")
        return "A new `IEnumVARIANT` over the entries, in their order.";
    return "\\copydoc " + ModelClass(info) + "::" + name;
}

} // namespace

std::string GenerateHostHeader()
{
    std::string text = kHead;
    const auto interfaces = Interfaces();
    for (const ClassInfo* const info : interfaces)
        text += std::string("struct ") + info->Interface().name + ";\n";
    for (const ClassInfo* const info : interfaces)
    {
        text += "\n/// A `" + ModelClass(*info) + "` as hosts hold it.\n";
        text += std::string("struct ") + info->Interface().name + " : IDispatch\n{\n";
        for (const Member& member : info->members)
        {
            text += "    /// " + CommentOf(*info, member) + "\n";
            text += "    virtual HRESULT STDMETHODCALLTYPE " + NameOf(member) + "(" + ArgumentsOf(member) +
                    ") = 0;\n";
        }
        text += "};\n";
    }
    text += "\n/// @}\n/// \\cond IDENTIFIERS\n";
    const auto putId = [&](const char* variable, const ClassInfo& info, const GUID& guid)
    {
        text += std::string("template <>\ninline constexpr GUID ") + variable + "<" + info.Interface().name +
                "> = Component::ParseGuid(\"" + ToString(guid) + "\");\n";
    };
    for (const ClassInfo* const info : interfaces)
    {
        putId("kInterfaceId", *info, info->Interface().guid);
        if (info->create)
            putId("kClassId", *info, info->classId);
    }
    text += "/// \\endcond\n\n} // namespace ZLMIM::Host\n\n#endif\n";
    return text;
}

} // namespace ZLMIM::Component
