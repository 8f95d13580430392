#ifndef ZLMIM_COMPONENT_EXPOSE_H
#define ZLMIM_COMPONENT_EXPOSE_H

#include "zlmim/component/live_count.h"
#include "zlmim/component/status.h"
#include "zlmim/model/com_header.h"

#include <memory>
#include <utility>

namespace ZLMIM::Component
{

/// The table of functions of class `T`, which a host's pointer to an object of that class points at.
template <class T>
[[nodiscard]] const void* FunctionsOf() noexcept;

/// The face of an object for a host, which owns a reference to it; null for none. The object lives as long as
/// hosts hold its face, and so does what its reference holds: the whole that it is a part of.
template <class T>
[[nodiscard]] ComHeader* Expose(std::shared_ptr<T> object) noexcept
{
    if (!object)
        return nullptr;
    ComHeader& header = object->ComHeader;
    if (header.References.fetch_add(1) == 0)
    {
        header.Functions = FunctionsOf<T>();
        header.Self = std::move(object);
        ++LiveCount;
    }
    return &header;
}

/// The object whose face a host shows; none for null.
/// @throws Failure for a pointer to anything but an object of class `T` of this module
template <class T>
[[nodiscard]] std::shared_ptr<T> Unwrap(const ComHeader* header)
{
    if (!header)
        return nullptr;
    // All interfaces begin with a pointer to their table: nothing else is known of a stranger's object.
    if (header->Functions != FunctionsOf<T>())
        throw Failure{E_INVALIDARG};
    return std::static_pointer_cast<T>(header->Self);
}

/// The object that a call came to.
template <class T>
[[nodiscard]] T& ObjectOf(const ComHeader* header) noexcept
{
    return *static_cast<T*>(header->Self.get());
}

} // namespace ZLMIM::Component

#endif
