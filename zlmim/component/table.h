#ifndef ZLMIM_COMPONENT_TABLE_H
#define ZLMIM_COMPONENT_TABLE_H

#include "zlmim/component/class_info.h"
#include "zlmim/component/slots.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ZLMIM::Component
{

/// The table of an interface is told once, in the order of its slots, by rows of these kinds. A row stands
/// for one slot, or for two: reading and writing a property. The table of functions comes from the types of
/// the rows, all that describes the members from their values.
template <class... Slots>
struct Rows
{
    std::array<Member, sizeof...(Slots)> members;
};

/// A property, read before written. `kGet` is a public field, or the function that reads it; `kPut` is the
/// same field, or the function that writes it.
template <auto kGet, auto kPut = kGet>
[[nodiscard]] constexpr Rows<GetSlot<kGet>, PutSlot<kPut>> Property(const char* name,
                                                                    const char* help = nullptr)
{
    return {{GetSlot<kGet>::Describe(name, help), PutSlot<kPut>::Describe(name, help)}};
}

/// A property whose slot for writing comes first.
template <auto kGet, auto kPut = kGet>
[[nodiscard]] constexpr Rows<PutSlot<kPut>, GetSlot<kGet>> PropertyPutFirst(const char* name,
                                                                            const char* help = nullptr)
{
    return {{PutSlot<kPut>::Describe(name, help), GetSlot<kGet>::Describe(name, help)}};
}

/// A method: a member function, or a function whose first argument is the object. `kHow` tells how each
/// argument travels, `names` what it is called.
template <auto kFunction, How... kHow>
[[nodiscard]] constexpr Rows<MethodSlot<kFunction, kHow...>>
Method(const char* name, std::array<const char*, sizeof...(kHow)> names = {}, const char* help = nullptr)
{
    return {{MethodSlot<kFunction, kHow...>::Describe(name, names, help)}};
}

/// The same with a number of its own for calls by name; the last `optionalCount` arguments may be left out.
template <auto kFunction, How... kHow>
[[nodiscard]] constexpr Rows<MethodSlot<kFunction, kHow...>>
NumberedMethod(DISPID id, const char* name, std::array<const char*, sizeof...(kHow)> names = {},
               std::size_t optionalCount = 0)
{
    auto rows = Method<kFunction, kHow...>(name, names);
    rows.members[0].id = id;
    rows.members[0].optionalCount = optionalCount;
    return rows;
}

/// An interface whose members have no numbers yet.
template <class... A, class... B>
[[nodiscard]] constexpr Rows<A..., B...> operator+(const Rows<A...>& a, const Rows<B...>& b)
{
    Rows<A..., B...> rows{};
    for (std::size_t i = 0; i < sizeof...(A); ++i)
        rows.members[i] = a.members[i];
    for (std::size_t i = 0; i < sizeof...(B); ++i)
        rows.members[sizeof...(A) + i] = b.members[i];
    return rows;
}

/// An interface. A member's number for calls by name is that of its first slot, counted from 0 with the
/// slots of `IUnknown` and `IDispatch`.
template <class... R>
[[nodiscard]] constexpr auto Table(const R&... rows)
{
    auto table = (rows + ...);
    int slot = kFirstSlot;
    for (Member& member : table.members)
    {
        member.id = slot++;
        for (const Member& earlier : table.members)
        {
            if (std::string_view(earlier.name) == member.name)
            {
                member.id = earlier.id;
                break;
            }
        }
    }
    return table;
}

/// An interface whose members have numbers of their own.
template <class... R>
[[nodiscard]] constexpr auto NumberedTable(const R&... rows)
{
    return (rows + ...);
}

} // namespace ZLMIM::Component

#endif
