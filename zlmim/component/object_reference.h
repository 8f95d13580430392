#pragma once

#include "zlmim/component/status.h"
#include "zlmim/model/com_header.h"

#include <memory>
#include <utility>

namespace ZLMIM::Component
{

/// The function table of class `T`, which a host's pointer to an object of that class points at.
template <class T>
[[nodiscard]] const void* FunctionsOf() noexcept;

/// Adds a host's reference to the object that `header` is part of. Threads may add and release references to
/// one object at the same time.
void AddReference(ComHeader& header, const void* functions, std::shared_ptr<void> object) noexcept;

ULONG STDMETHODCALLTYPE AddRef(ComHeader* object) noexcept;
/// The last reference deletes the object, if the model doesn't hold it.
ULONG STDMETHODCALLTYPE Release(ComHeader* object) noexcept;

/// Returns a reference for a host; null for null. While hosts hold the object, they also hold what `object`
/// owns: the tree or model that it belongs to.
template <class T>
[[nodiscard]] ComHeader* Expose(std::shared_ptr<T> object) noexcept
{
    if (!object)
        return nullptr;
    ComHeader& header = object->ComHeader;
    AddReference(header, FunctionsOf<T>(), std::move(object));
    return &header;
}

/// The object that a host passed; null for null.
/// @throws Failure if it isn't an object of class `T` of this module
template <class T>
[[nodiscard]] std::shared_ptr<T> Unwrap(const ComHeader* header)
{
    if (!header)
        return nullptr;
    // Any interface starts with a pointer to its functions. Of other modules' objects nothing more is known.
    if (header->Functions != FunctionsOf<T>())
        throw Failure{E_INVALIDARG, "an object of another class or of another module"};
    return std::static_pointer_cast<T>(header->Self);
}

/// The object whose member a host calls.
template <class T>
[[nodiscard]] T& ObjectOf(const ComHeader* header) noexcept
{
    return *static_cast<T*>(header->Self.get());
}

} // namespace ZLMIM::Component
