#include "zlmim/component/dispatch.h"

#include "zlmim/component/com_object.h"
#include "zlmim/component/holders.h"
#include "zlmim/component/object_reference.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

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

[[nodiscard]] bool HasInterface(const ClassInfo& info, REFIID iid)
{
    return std::any_of(info.interfaces.begin(), info.interfaces.end(),
                       [&](const InterfaceId& id) { return IsSame(id.guid, iid); });
}

/// Reports that an object's failures have texts. A second interface of the object with references of its own.
class ErrorSupport final : public ComObject<ISupportErrorInfo>
{
public:
    ErrorSupport(const ClassInfo& info, ComHeader& object) : mInfo(info), mObject(object)
    {
        Component::AddRef(&mObject);
    }
    ErrorSupport(const ErrorSupport&) = delete;
    ErrorSupport& operator=(const ErrorSupport&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) noexcept override
    {
        return IsSame(iid, kISupportErrorInfo) ? Share(result, true)
                                               : Component::QueryInterface(mInfo, mObject, iid, result);
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept override
    {
        return HasInterface(mInfo, iid) ? S_OK : S_FALSE;
    }

private:
    ~ErrorSupport() override { Component::Release(&mObject); }

    const ClassInfo& mInfo;
    ComHeader& mObject;
};

/// Scripts can't distinguish reading a property from calling a method, nor writing a value from writing an
/// object.
[[nodiscard]] bool Accepts(const Member& member, WORD flags)
{
    constexpr int kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    constexpr int kWrite = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    return (member.kind & kRead && flags & kRead) || (member.kind & kWrite && flags & kWrite);
}

/// The status in `EXCEPINFO`. If it has a text, script hosts see a classic error number only in this form.
[[nodiscard]] SCODE ClassicStatus(HRESULT status)
{
    constexpr std::pair<HRESULT, int> kNumbers[] = {{E_INVALIDARG, 5},
                                                    {DISP_E_OVERFLOW, 6},
                                                    {E_OUTOFMEMORY, 7},
                                                    {DISP_E_BADINDEX, 9},
                                                    {DISP_E_TYPEMISMATCH, 13}};
    for (const auto& [known, number] : kNumbers)
    {
        if (status == known)
            return static_cast<SCODE>(0x800A0000) + number;
    }
    return status;
}

/// Passes the arguments on to the list that the property `member` holds.
[[nodiscard]] HRESULT DispatchToList(const Member& member, ComHeader& object, const NamedCall& call)
{
    Variant list;
    if (FAILED(member.callByName(&object, {}, list).thrown) || !list.pdispVal)
        throw Failure{DISP_E_BADPARAMCOUNT, "the property holds no list that could take arguments"};
    return list.pdispVal->Invoke(DISPID_VALUE, kNoInterface, 0, call.flags, call.arguments, call.result,
                                 call.exception, call.badArgument);
}

/// One variant for each parameter, from positional and named arguments.
class Arguments
{
public:
    /// Thrown for a named argument that the member doesn't have, or has already.
    struct UnknownName
    {
        UINT index;
    };

    void Place(const Member& member, const DISPPARAMS& given)
    {
        mMissing.vt = VT_ERROR;
        mMissing.scode = DISP_E_PARAMNOTFOUND;
        if (given.cArgs > member.count)
            throw Failure{DISP_E_BADPARAMCOUNT, "too many arguments"};
        // The host passes the named arguments first, then the positional ones from the last to the first.
        for (UINT i = 0; i < given.cNamedArgs; ++i)
        {
            const bool isNewValue = member.kind != DISPATCH_METHOD && member.kind != DISPATCH_PROPERTYGET &&
                                    given.rgdispidNamedArgs[i] == DISPID_PROPERTYPUT;
            const auto position =
                isNewValue ? member.count - 1 : static_cast<std::size_t>(given.rgdispidNamedArgs[i]);
            if (position >= member.count || mPlaces[position])
                throw UnknownName{i};
            mPlaces[position] = &given.rgvarg[i];
        }
        for (UINT i = 0; i < given.cArgs - given.cNamedArgs; ++i)
        {
            if (mPlaces[i])
                throw Failure{DISP_E_BADPARAMCOUNT, "an argument by position and by name"};
            mPlaces[i] = &given.rgvarg[given.cArgs - 1 - i];
        }
        for (std::size_t i = 0; i < member.count; ++i)
        {
            if (!mPlaces[i] && i < member.count - member.optionalCount)
                throw Failure{given.cNamedArgs > 0 ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT,
                              "an argument is missing"};
            if (!mPlaces[i])
                mPlaces[i] = &mMissing;
        }
    }

    [[nodiscard]] VARIANT* const* Places() const noexcept { return mPlaces.data(); }

private:
    Variant mMissing;
    std::array<VARIANT*, Member::kMaxParameters> mPlaces{};
};

[[nodiscard]] HRESULT DispatchToMember(const ClassInfo& info, const Member& member, ComHeader& object,
                                       const NamedCall& call)
{
    const DISPPARAMS& given = *call.arguments;
    if (member.kind == DISPATCH_PROPERTYGET && member.result.isObject && given.cArgs > 0)
        return DispatchToList(member, object, call);
    const auto refuse = [&](UINT index, HRESULT status, const std::string& text)
    {
        if (call.badArgument)
            *call.badArgument = index;
        SetError(info, (std::string(member.name) + ": " + text).c_str());
        return status;
    };
    Arguments arguments;
    Variant result;
    CallOutcome outcome;
    try
    {
        arguments.Place(member, given);
        outcome = member.callByName(&object, {arguments.Places(), member.count}, result);
    }
    catch (const Arguments::UnknownName& unknown)
    {
        return refuse(unknown.index, DISP_E_PARAMNOTFOUND, "no such named argument, or twice");
    }
    catch (const BadArgument& bad)
    {
        const Parameter& parameter = member.parameters[bad.position];
        return refuse(static_cast<UINT>(arguments.Places()[bad.position] - given.rgvarg), bad.status,
                      std::string("argument ") + parameter.name + " must be " + parameter.type);
    }
    if (FAILED(outcome.status))
        throw Failure{outcome.status, "the result can't be copied"};
    if (FAILED(outcome.thrown))
    {
        if (call.exception)
        {
            *call.exception = {};
            TakeError(*call.exception);
            call.exception->scode = ClassicStatus(outcome.thrown);
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

[[nodiscard]] HRESULT TryDispatch(const ClassInfo& info, ComHeader& object, const NamedCall& call)
{
    if (!IsSame(call.iid, kNoInterface))
        throw Failure{DISP_E_UNKNOWNINTERFACE, "the interface id of a call by name must be null"};
    const DISPPARAMS* const given = call.arguments;
    if (!given || given->cNamedArgs > given->cArgs || (given->cArgs > 0 && !given->rgvarg) ||
        (given->cNamedArgs > 0 && !given->rgdispidNamedArgs))
        throw Failure{E_INVALIDARG, "a call by name needs its arguments"};
    const auto member = std::find_if(info.members.begin(), info.members.end(),
                                     [&](const Member& candidate)
                                     { return candidate.id == call.id && Accepts(candidate, call.flags); });
    if (member == info.members.end())
        throw Failure{DISP_E_MEMBERNOTFOUND, "no member with this id can be called in this way"};
    return DispatchToMember(info, *member, object, call);
}

} // namespace

HRESULT QueryInterface(const ClassInfo& info, ComHeader& object, REFIID iid, void** result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = nullptr;
    if (IsSame(iid, kISupportErrorInfo))
        return Guarded([&] { *result = static_cast<ISupportErrorInfo*>(new ErrorSupport(info, object)); });
    if (!IsSame(iid, kIUnknown) && !IsSame(iid, kIDispatch) && !HasInterface(info, iid))
        return E_NOINTERFACE;
    AddRef(&object);
    *result = &object;
    return S_OK;
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

HRESULT Dispatch(const ClassInfo& info, ComHeader& object, const NamedCall& call) noexcept
{
    HRESULT status = S_OK;
    const HRESULT failure = Guarded([&] { status = TryDispatch(info, object, call); }, &info);
    if (FAILED(failure))
        status = failure;
    if (FAILED(status) && call.exception && status != DISP_E_EXCEPTION)
        *call.exception = {};
    // Only now, since a host may pass one variable as result and argument.
    if (FAILED(status) && call.result)
        VariantInit(call.result);
    return status;
}

} // namespace ZLMIM::Component
