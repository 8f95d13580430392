#ifndef ZLMIM_COMPONENT_COUNTED_H
#define ZLMIM_COMPONENT_COUNTED_H

#include "zlmim/component/abi.h"
#include "zlmim/component/live_count.h"

#include <atomic>

namespace ZLMIM::Component
{

/// An object of the component's own that counts its references, the first being its maker's, and goes with
/// the last one.
template <class I>
class Counted : public I
{
public:
    Counted() { ++LiveCount; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return mReferences.fetch_add(1) + 1; }
    ULONG STDMETHODCALLTYPE Release() noexcept final
    {
        const ULONG left = mReferences.fetch_sub(1) - 1;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() { --LiveCount; }

    /// The answer to `QueryInterface`: this very object, if it has what was asked for.
    [[nodiscard]] HRESULT Answer(void** object, bool isOffered) noexcept
    {
        if (!object)
            return E_POINTER;
        *object = isOffered ? static_cast<I*>(this) : nullptr;
        if (!isOffered)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

private:
    std::atomic<ULONG> mReferences = 1;
};

} // namespace ZLMIM::Component

#endif
