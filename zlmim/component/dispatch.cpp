#include "zlmim/component/dispatch.h"

#include "zlmim/component/live_count.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace ZLMIM::Component
{
namespace
{

[[nodiscard]] constexpr char16_t LowerLetter(char16_t c) { return c >= u'A' && c <= u'Z' ? c + 32 : c; }

[[nodiscard]] bool IsSameName(const char* a, const OLECHAR* b)
{
    for (; *a && *b; ++a, ++b)
    {
        if (LowerLetter(static_cast<unsigned char>(*a)) != LowerLetter(static_cast<char16_t>(*b)))
            return false;
    }
    return !*a && !*b;
}

/// A script can't tell a method from a property that it reads, nor whether it writes a value or an object.
[[nodiscard]] bool Answers(const Member& member, WORD flags)
{
    constexpr int kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    constexpr int kWrite = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    return (member.kind & kRead && flags & kRead) || (member.kind & kWrite && flags & kWrite);
}

[[nodiscard]] const Member* Find(const ClassInfo& info, DISPID id, WORD flags)
{
    for (const Member& member : info.members)
    {
        if (member.id == id && Answers(member, flags))
            return &member;
    }
    return nullptr;
}

/// The same arguments to the list that `member` gives.
[[nodiscard]] HRESULT InvokeResult(const Member& member, ComHeader& object, const Call& call)
{
    Variant list;
    const Invoked read = member.invoke(&object, {}, list);
    if (FAILED(read.status) || FAILED(read.raised))
        return FAILED(read.status) ? read.status : read.raised;
    if (list.vt != VT_DISPATCH || !list.pdispVal)
        return DISP_E_BADPARAMCOUNT;
    return list.pdispVal->Invoke(DISPID_VALUE, kNoInterface, 0, call.flags, call.arguments, call.result,
                                 call.exception, call.badArgument);
}

[[nodiscard]] HRESULT InvokeMember(const Member& member, ComHeader& object, const Call& call)
{
    const DISPPARAMS& given = *call.arguments;
    const bool isWritten = member.kind == DISPATCH_PROPERTYPUT || member.kind == DISPATCH_PROPERTYPUTREF;
    const bool isNamed =
        given.cNamedArgs > 1 || (given.cNamedArgs == 1 && !(isWritten && given.rgdispidNamedArgs &&
                                                            *given.rgdispidNamedArgs == DISPID_PROPERTYPUT));
    if (isNamed)
        return DISP_E_NONAMEDARGS;
    if (member.kind == DISPATCH_PROPERTYGET && member.result.isObject && given.cArgs > 0)
        return InvokeResult(member, object, call);
    if (given.cArgs > member.count || given.cArgs + member.optionalCount < member.count)
        return DISP_E_BADPARAMCOUNT;

    Variant leftOut;
    leftOut.vt = VT_ERROR;
    leftOut.scode = DISP_E_PARAMNOTFOUND;
    std::array<VARIANT*, Member::kMaxParameters> arguments;
    arguments.fill(&leftOut);
    for (UINT i = 0; i < given.cArgs; ++i)
        arguments[i] = &given.rgvarg[given.cArgs - 1 - i];

    Variant result;
    const Invoked invoked = member.invoke(&object, {arguments.data(), member.count}, result);
    if (FAILED(invoked.status))
        return invoked.status;
    if (FAILED(invoked.raised))
    {
        if (call.exception)
        {
            *call.exception = {};
            call.exception->scode = invoked.raised;
        }
        return DISP_E_EXCEPTION;
    }
    if (call.result)
    {
        *call.result = result;
        VariantInit(&result);
    }
    return S_OK;
}

[[nodiscard]] HRESULT TryInvoke(const ClassInfo& info, ComHeader& object, const Call& call) noexcept
{
    if (!IsSame(call.iid, kNoInterface))
        return DISP_E_UNKNOWNINTERFACE;
    if (!call.arguments || (call.arguments->cArgs > 0 && !call.arguments->rgvarg))
        return E_INVALIDARG;
    const Member* const member = Find(info, call.id, call.flags);
    if (!member)
        return DISP_E_MEMBERNOTFOUND;
    try
    {
        return InvokeMember(*member, object, call);
    }
    catch (const BadArgument& bad)
    {
        if (call.badArgument)
            *call.badArgument = bad.index;
        return bad.status;
    }
    catch (...)
    {
        return StatusOfException();
    }
}

} // namespace

HRESULT QueryInterface(const ClassInfo& info, ComHeader& object, REFIID iid, void** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    const auto isAsked = [&](const InterfaceId& id) { return IsSame(id.guid, iid); };
    if (!IsSame(iid, kIUnknown) && !IsSame(iid, kIDispatch) &&
        std::none_of(info.interfaces.begin(), info.interfaces.end(), isAsked))
        return E_NOINTERFACE;
    AddRef(&object);
    *result = &object;
    return S_OK;
}

ULONG STDMETHODCALLTYPE AddRef(ComHeader* object) noexcept { return object->References.fetch_add(1) + 1; }

ULONG STDMETHODCALLTYPE Release(ComHeader* object) noexcept
{
    const std::uint32_t left = object->References.fetch_sub(1) - 1;
    if (left > 0)
        return left;
    // The object may go, and its face with it, when this reference does.
    const std::shared_ptr<void> self = std::move(object->Self);
    object->Functions = nullptr;
    --LiveCount;
    return 0;
}

HRESULT STDMETHODCALLTYPE GetTypeInfoCount(ComHeader*, UINT* count) noexcept
{
    if (!count)
        return E_POINTER;
    *count = TypeInfoCount();
    return S_OK;
}

HRESULT GetTypeInfo(const ClassInfo& info, UINT number, ITypeInfo** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    return number == 0 ? GetTypeInfoOf(info.Interface().guid, result) : DISP_E_BADINDEX;
}

HRESULT GetIDsOfNames(const ClassInfo& info, REFIID iid, LPOLESTR* names, UINT count, DISPID* ids) noexcept
{
    if (!ids)
        return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (!names || count == 0 || std::find(names, names + count, nullptr) != names + count)
        return E_INVALIDARG;
    if (!IsSame(iid, kNoInterface))
        return DISP_E_UNKNOWNINTERFACE;
    const auto member = std::find_if(info.members.begin(), info.members.end(),
                                     [&](const Member& m) { return IsSameName(m.name, names[0]); });
    if (member == info.members.end())
        return DISP_E_UNKNOWNNAME;
    ids[0] = member->id;
    HRESULT status = S_OK;
    for (UINT i = 1; i < count; ++i)
    {
        const auto parameters = member->Parameters();
        const auto parameter = std::find_if(parameters.begin(), parameters.end(),
                                            [&](const Parameter& p) { return IsSameName(p.name, names[i]); });
        if (parameter == parameters.end())
            status = DISP_E_UNKNOWNNAME;
        else
            ids[i] = static_cast<DISPID>(parameter - parameters.begin());
    }
    return status;
}

HRESULT Invoke(const ClassInfo& info, ComHeader& object, const Call& call) noexcept
{
    const HRESULT status = TryInvoke(info, object, call);
    // Only now: a host may want the result where an argument stands.
    if (FAILED(status) && call.result)
        VariantInit(call.result);
    return status;
}

} // namespace ZLMIM::Component
