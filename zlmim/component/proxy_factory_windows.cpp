#include "zlmim/component/classes.h"
#include "zlmim/component/com_object.h"
#include "zlmim/component/holders.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/registration.h"
#include "zlmim/component/status.h"

#include <utility>

// Missing in the headers of MinGW.
extern "C" HRESULT STDAPICALLTYPE CreateProxyFromTypeInfo(ITypeInfo* info, IUnknown* outer, REFIID iid,
                                                          IRpcProxyBuffer** proxy, void** object);
extern "C" HRESULT STDAPICALLTYPE CreateStubFromTypeInfo(ITypeInfo* info, REFIID iid, IUnknown* server,
                                                         IRpcStubBuffer** stub);

namespace ZLMIM::Component
{
namespace
{

constexpr GUID kIPSFactoryBuffer = ParseGuid("D5F569D0-593B-101A-B569-08002B2DBF7A");

/// Marshals older identifiers of an interface between apartments, with the members of its present one.
class ProxyFactory final : public ComObject<IPSFactoryBuffer>
{
public:
    explicit ProxyFactory(Pointer<ITypeInfo> info) : mInfo(std::move(info)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override
    {
        return Share(object, IsSame(iid, kIUnknown) || IsSame(iid, kIPSFactoryBuffer));
    }
    HRESULT STDMETHODCALLTYPE CreateProxy(IUnknown* outer, REFIID iid, IRpcProxyBuffer** proxy,
                                          void** object) noexcept override
    {
        return ::CreateProxyFromTypeInfo(mInfo.Get(), outer, iid, proxy, object);
    }
    HRESULT STDMETHODCALLTYPE CreateStub(REFIID iid, IUnknown* server,
                                         IRpcStubBuffer** stub) noexcept override
    {
        return ::CreateStubFromTypeInfo(mInfo.Get(), iid, server, stub);
    }

private:
    Pointer<ITypeInfo> mInfo;
};

[[nodiscard]] Pointer<ITypeInfo> SlotsOf(const ClassInfo& info)
{
    // A dual interface has two descriptions. This number gets the one of the slots.
    constexpr auto kSlots = static_cast<UINT>(-1);
    Pointer<ITypeInfo> both;
    Pointer<ITypeInfo> slots;
    HREFTYPE reference = 0;
    if (FAILED(GetTypeInfoOf(info.Interface().guid, both.Out())) ||
        FAILED(both->GetRefTypeOfImplType(kSlots, &reference)) ||
        FAILED(both->GetRefTypeInfo(reference, slots.Out())))
        throw Failure{E_FAIL, "the type library can't be read"};
    return slots;
}

} // namespace

HRESULT GetSystemClassObject(REFCLSID classId, REFIID iid, void** object) noexcept
{
    HRESULT status = CLASS_E_CLASSNOTAVAILABLE;
    for (const ClassInfo* const info : Classes())
    {
        const GUID* const marshaller = OlderMarshaller(*info);
        if (!marshaller || !IsSame(*marshaller, classId))
            continue;
        const HRESULT failure = Guarded(
            [&] {
                status = Pointer<ProxyFactory>(new ProxyFactory(SlotsOf(*info)))->QueryInterface(iid, object);
            });
        return FAILED(failure) ? failure : status;
    }
    return status;
}

} // namespace ZLMIM::Component
