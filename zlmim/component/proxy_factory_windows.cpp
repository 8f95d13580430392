#include "zlmim/component/proxy_factory_windows.h"

#include "zlmim/component/com_object.h"
#include "zlmim/component/guid.h"

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

class ProxyFactory final : public ComObject<IPSFactoryBuffer>
{
public:
    explicit ProxyFactory(Pointer<ITypeInfo> info) : mInfo(std::move(info)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override
    {
        return HandOut(object, IsSame(iid, kIUnknown) || IsSame(iid, kIPSFactoryBuffer));
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

} // namespace

HRESULT GetProxyFactory(const Pointer<ITypeInfo>& info, REFIID iid, void** object)
{
    // A dual interface has two descriptions. This number gets the one of the slots.
    constexpr auto kSlots = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    HRESULT status = info->GetRefTypeOfImplType(kSlots, &reference);
    Pointer<ITypeInfo> slots;
    if (SUCCEEDED(status))
        status = info->GetRefTypeInfo(reference, slots.Out());
    if (FAILED(status))
        return status;
    return Pointer<ProxyFactory>(new ProxyFactory(std::move(slots)))->QueryInterface(iid, object);
}

} // namespace ZLMIM::Component
