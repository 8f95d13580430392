#ifndef ZLMIM_COMPONENT_CLASS_INFO_H
#define ZLMIM_COMPONENT_CLASS_INFO_H

#include "zlmim/component/abi.h"
#include "zlmim/component/arguments.h"
#include "zlmim/model/com_header.h"

#include <array>
#include <cstddef>
#include <span>

namespace ZLMIM::Component
{

/// An argument, or the result, of a member.
struct Parameter
{
    const char* name = nullptr;
    /// Its type in the type library; for an object or list the name of its class. None where there is no
    /// result.
    const char* type = nullptr;
    bool isObject = false;
    How how = How::In;
};

/// How a call by name went: `status` answers the call itself, `raised` tells what the member answered.
struct Invoked
{
    HRESULT status = S_OK;
    HRESULT raised = S_OK;
};

/// One slot of an interface.
struct Member
{
    static constexpr std::size_t kMaxParameters = 6;

    const char* name = nullptr;
    const char* help = nullptr;
    /// One of `DISPATCH_METHOD`, `DISPATCH_PROPERTYGET`, `DISPATCH_PROPERTYPUT`, `DISPATCH_PROPERTYPUTREF`.
    WORD kind = DISPATCH_METHOD;
    DISPID id = 0;
    std::size_t count = 0;
    std::size_t optionalCount = 0;
    std::array<Parameter, kMaxParameters> parameters{};
    Parameter result{};
    /// Calls the slot with arguments by name, which must be as many as there are parameters.
    Invoked (*invoke)(ComHeader* object, std::span<VARIANT* const> arguments, VARIANT& result) = nullptr;

    [[nodiscard]] constexpr std::span<const Parameter> Parameters() const noexcept
    {
        return {parameters.data(), count};
    }
};

/// An interface, by one of its identifiers.
struct InterfaceId
{
    const char* name;
    GUID guid;
    /// Behind the point; before it stands 1.
    int minorVersion = 0;
};

/// All that a host may know of a class.
struct ClassInfo
{
    const char* name;
    GUID classId;
    const char* help;
    /// The identifiers of the one interface, the oldest first, its present one last.
    std::span<const InterfaceId> interfaces;
    std::span<const Member> members;
    /// A new object, for a class that hosts may create.
    ComHeader* (*create)();

    [[nodiscard]] constexpr const InterfaceId& Interface() const noexcept { return interfaces.back(); }
};

/// The slots that every interface begins with, those of `IUnknown` and `IDispatch`.
inline constexpr int kFirstSlot = 7;

} // namespace ZLMIM::Component

#endif
