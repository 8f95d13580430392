#include "zlmim/component/generator/generate.h"

#include <string_view>

namespace ZLMIM::Component
{
namespace
{

constexpr const char* kHeaderHead =
    R"(// clang-format off
#pragma once

#include "zlmim/component/abi.h"
#include "zlmim/component/guid.h"
#include "zlmim/component/holders.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

/// For hosts of the component: the interfaces of its classes, their identifiers, records and enumerations, and
/// holders for texts, variants and counted references. A host links no library: it loads the module and gets
/// `DllGetClassObject` from it.
///
/// An interface has the members of the class of the same name, with the same meaning and units. Every member returns
/// a status, `S_OK` on success. A member's result is its last argument, and the host owns it. Lists count from 1, the
/// elements of `Geometry` and `BoneAnim` from 0. Exceptions of the classes become a status:
///
/// | Exception | Status |
/// |---|---|
/// | `BoundsError` | `DISP_E_BADINDEX` |
/// | `OverflowError` | `DISP_E_OVERFLOW` |
/// | `FileSystemError` | 0x800A0000 + its number |
/// | `std::bad_alloc` | `E_OUTOFMEMORY` |
/// | `std::invalid_argument`, also for an object of another class or another module | `E_INVALIDARG` |
/// | a null pointer for an argument or result | `E_POINTER` |
/// | any other | `E_FAIL` |
///
/// Every failure of a member has a text: `TakeError` gets it after a call by slot, `EXCEPINFO` has it after a call
/// by name. There the status is 0x800A0000 + the number that scripts know, if it has one: 5 for `E_INVALIDARG`, 6 for
/// `DISP_E_OVERFLOW`, 7 for `E_OUTOFMEMORY`, 9 for `DISP_E_BADINDEX`, 13 for `DISP_E_TYPEMISMATCH`.
///
/// Objects refer to one another by counted references, so a host that links them in a ring must break the ring.
/// `MeshEntry.Load` makes one: the model's `MeshTable` holds the entry, and the entry's `Parent` holds the model.
/// `entry->putref_Parent(nullptr)` breaks it.
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

/// The module's exported function "DllGetClassObject".
using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID classId, REFIID iid, void** object);

/// Creates an object of the class whose interface is `I`. Returns the status of the module or its class factory.
template <class I>
[[nodiscard]] HRESULT Create(GetClassObject getClassObject, Pointer<I>& object)
{
    Pointer<IClassFactory> factory;
    const HRESULT status = getClassObject(kClassId<I>, Component::kIClassFactory, factory.OutAny());
    return FAILED(status) ? status : factory->CreateInstance(nullptr, kInterfaceId<I>, object.OutAny());
}

/// Gets the text of the thread's last failed call by slot, and clears it. `S_FALSE` if there is none. The error's
/// source is the class's ProgID.
[[nodiscard]] inline HRESULT TakeError([[maybe_unused]] GetClassObject getClassObject, Pointer<IErrorInfo>& error)
{
#ifdef _WIN32
    return ::GetErrorInfo(0, error.Out());
#else
    return getClassObject(Component::kIErrorInfo, Component::kIErrorInfo, error.OutAny());
#endif
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
    return parameter.passing == Passing::In ? type : type + "*";
}

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

/// The class of the model that an interface belongs to.
[[nodiscard]] std::string ModelClass(const ClassInfo& info)
{
    const std::string name = info.name;
    return "ZLMIM::" + (name == "anim" ? "Anim" : name);
}

/// Members are documented in the model's classes, except for what only lists of the component have.
[[nodiscard]] std::string CommentOf(const ClassInfo& info, const Member& member)
{
    const std::string name = member.name;
    if (member.kind == DISPATCH_PROPERTYPUT || member.kind == DISPATCH_PROPERTYPUTREF)
        return "Sets what `get_" + name + "` returns.";
    if (!info.create && name == "Add")
        return "Appends `Item`, which must be of the type that the list holds. Omit the other arguments.";
    if (!info.create && name == "_NewEnum")
        return "Returns a new `IEnumVARIANT` over the entries, in their order.";
    return "\\copydoc " + ModelClass(info) + "::" + name;
}

} // namespace

std::string GenerateHostHeader()
{
    std::string text = std::string("// ") + kGenerated + "\n" + kHeaderHead;
    const auto interfaces = Interfaces();
    for (const ClassInfo* const info : interfaces)
        text += std::string("struct ") + info->Interface().name + "; ";
    text += "\n";
    for (const ClassInfo* const info : interfaces)
    {
        text += "/// Interface of `" + ModelClass(*info) + "`.\n";
        text += std::string("struct ") + info->Interface().name + " : IDispatch {\n";
        for (const Member& member : info->members)
        {
            text += "    virtual HRESULT STDMETHODCALLTYPE " + NameOf(member) + "(" + ArgumentsOf(member) +
                    ") = 0; ///< " + CommentOf(*info, member) + "\n";
        }
        text += "};\n";
    }
    text += "\n/// @}\n/// \\cond IDENTIFIERS\n";
    const auto putId = [&](const char* variable, const ClassInfo& info, const GUID& guid)
    {
        text += std::string("template <> inline constexpr GUID ") + variable + "<" + info.Interface().name +
                "> = Component::ParseGuid(\"" + ToString(guid) + "\");\n";
    };
    for (const ClassInfo* const info : interfaces)
    {
        putId("kInterfaceId", *info, info->Interface().guid);
        if (info->create)
            putId("kClassId", *info, info->classId);
    }
    text += "/// \\endcond\n\n} // namespace ZLMIM::Host\n";
    return text;
}

} // namespace ZLMIM::Component
