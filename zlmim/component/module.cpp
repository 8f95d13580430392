#include "zlmim/component/module.h"
#include "zlmim/component/classes.h"
#include "zlmim/component/com_object.h"
#include "zlmim/component/dispatch.h"
#include "zlmim/component/holders.h"
#include "zlmim/component/object_reference.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"

#include <algorithm>

namespace ZLMIM::Component
{
namespace
{

/// Creates objects of one class for hosts.
class ClassFactory final : public ComObject<IClassFactory>
{
public:
    explicit ClassFactory(const ClassInfo& info) : mInfo(info) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override
    {
        return Share(object, IsSame(iid, kIUnknown) || IsSame(iid, kIClassFactory));
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override
    {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        ComHeader* created = nullptr;
        if (const HRESULT status = Guarded([&] { created = mInfo.create(); }); FAILED(status))
            return status;
        const HRESULT status = Component::QueryInterface(mInfo, *created, iid, object);
        Component::Release(created);
        return status;
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override
    {
        if (lock)
        {
            ++LockCount;
            ++LiveCount;
            return S_OK;
        }
        long locks = LockCount;
        do
        {
            if (locks == 0)
                return E_FAIL;
        } while (!LockCount.compare_exchange_weak(locks, locks - 1));
        --LiveCount;
        return S_OK;
    }

private:
    const ClassInfo& mInfo;
};

} // namespace
} // namespace ZLMIM::Component

using namespace ZLMIM::Component;

HRESULT STDAPICALLTYPE DllCanUnloadNow()
{
    if (LiveCount != 0)
        return S_FALSE;
    FreeCaches();
    return S_OK;
}

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object)
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    const auto classes = Classes();
    const auto info =
        std::find_if(classes.begin(), classes.end(),
                     [&](const ClassInfo* candidate) { return IsSame(candidate->classId, classId); });
    if (info == classes.end())
        return GetSystemClassObject(classId, iid, object);
    return Guarded(
        [&]
        {
            const Pointer<ClassFactory> factory(new ClassFactory(**info));
            if (const HRESULT status = factory->QueryInterface(iid, object); FAILED(status))
                throw Failure{status, "a class factory has no such interface"};
        });
}

HRESULT STDAPICALLTYPE DllRegisterServer() { return Register(); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return Unregister(); }
