#pragma once

#include "zlmim/component/guid.h"

#include <array>
#include <cstddef>
#include <span>

namespace ZLMIM
{

class ComHeader;

} // namespace ZLMIM

namespace ZLMIM::Component
{

/// How an argument is passed: by value, by reference for reading, or by reference for reading and changing.
/// The interface defines it for each argument.
enum class Passing
{
    In,
    Ref,
    InOut,
};

/// A parameter, or the result, of a member.
struct Parameter
{
    const char* name = nullptr;
    /// Its type in the type library; the class's name for an object or list. Null if there is no result.
    const char* type = nullptr;
    bool isObject = false;
    Passing passing = Passing::In;
};

/// How a call by name went: `status` is that of converting arguments and result, `thrown` the member's own.
struct CallOutcome
{
    HRESULT status = S_OK;
    HRESULT thrown = S_OK;
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
    /// How many of the last parameters may be omitted.
    std::size_t optionalCount = 0;
    std::array<Parameter, kMaxParameters> parameters{};
    Parameter result{};
    /// Calls the slot with variants, one for each parameter.
    /// @throws BadArgument for a variant that can't be converted
    CallOutcome (*callByName)(ComHeader* object, std::span<VARIANT* const> arguments,
                              VARIANT& result) = nullptr;

    [[nodiscard]] constexpr std::span<const Parameter> Parameters() const noexcept
    {
        return {parameters.data(), count};
    }
};

/// One of an interface's identifiers.
struct InterfaceId
{
    const char* name;
    GUID guid;
    /// The interface's version is 1 and this number, such as 1.3.
    int minorVersion = 0;
};

/// All that hosts can know of a class.
struct ClassInfo
{
    const char* name;
    GUID classId;
    const char* help;
    /// Identifiers of the one interface, from the oldest to the present one.
    std::span<const InterfaceId> interfaces;
    std::span<const Member> members;
    /// Creates an object. Null if hosts can't create the class.
    ComHeader* (*create)();

    [[nodiscard]] constexpr const InterfaceId& Interface() const noexcept { return interfaces.back(); }
};

/// Every interface begins with the slots of `IUnknown` and `IDispatch`, this many.
inline constexpr int kFirstSlot = 7;

} // namespace ZLMIM::Component
