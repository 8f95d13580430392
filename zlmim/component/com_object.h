#pragma once

#include "zlmim/component/abi.h"

#include <atomic>

namespace ZLMIM::Component
{

/// Objects, lists, enumerators, factories and locks of this module that hosts hold. The module must stay
/// loaded while this isn't 0.
inline std::atomic<long> LiveCount = 0;
/// How many of these are locks.
inline std::atomic<long> LockCount = 0;

/// An object that exists for hosts only. It starts with one reference, its creator's, and is deleted with the
/// last one.
template <class I>
class ComObject : public I
{
public:
    ComObject() { ++LiveCount; }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return mReferences.fetch_add(1) + 1; }
    ULONG STDMETHODCALLTYPE Release() noexcept final
    {
        const ULONG left = mReferences.fetch_sub(1) - 1;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ComObject() { --LiveCount; }

    /// Implements `QueryInterface`: hands out this object if `isOffered`.
    [[nodiscard]] HRESULT Share(void** object, bool isOffered) noexcept
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
