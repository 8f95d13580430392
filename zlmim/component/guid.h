#ifndef ZLMIM_COMPONENT_GUID_H
#define ZLMIM_COMPONENT_GUID_H

#include "zlmim/component/abi.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace ZLMIM::Component
{

/// \addtogroup hosts
/// @{

/// The identifier that is written "01234567-89AB-CDEF-0123-456789ABCDEF".
[[nodiscard]] consteval GUID ParseGuid(const char (&text)[37])
{
    GUID guid{};
    std::size_t at = 0;
    const auto takeByte = [&]
    {
        std::uint8_t byte = 0;
        if (text[at] == '-')
            ++at;
        for (int i = 0; i < 2; ++i)
        {
            const char c = text[at++];
            if (!((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F')))
                throw "an identifier has hexadecimal digits, in capitals";
            byte = static_cast<std::uint8_t>(byte * 16 + (c <= '9' ? c - '0' : c - 'A' + 10));
        }
        return byte;
    };
    for (int i = 0; i < 4; ++i)
        guid.Data1 = guid.Data1 << 8 | takeByte();
    for (auto* const number : {&guid.Data2, &guid.Data3})
    {
        for (int i = 0; i < 2; ++i)
            *number = static_cast<std::uint16_t>(*number << 8 | takeByte());
    }
    for (auto& byte : guid.Data4)
        byte = takeByte();
    return guid;
}

/// Whether two identifiers are equal.
[[nodiscard]] inline bool IsSame(const GUID& a, const GUID& b) noexcept
{
    return std::memcmp(&a, &b, sizeof(a)) == 0;
}

/// The identifier of nothing, all zero.
inline constexpr GUID kNoInterface{};
/// The identifier of `IUnknown`.
inline constexpr GUID kIUnknown = ParseGuid("00000000-0000-0000-C000-000000000046");
/// The identifier of `IDispatch`.
inline constexpr GUID kIDispatch = ParseGuid("00020400-0000-0000-C000-000000000046");
/// The identifier of `IClassFactory`.
inline constexpr GUID kIClassFactory = ParseGuid("00000001-0000-0000-C000-000000000046");
/// The identifier of `IEnumVARIANT`.
inline constexpr GUID kIEnumVariant = ParseGuid("00020404-0000-0000-C000-000000000046");
/// The identifier of `IRecordInfo`.
inline constexpr GUID kIRecordInfo = ParseGuid("0000002F-0000-0000-C000-000000000046");
/// The identifier of `_Collection`.
inline constexpr GUID kCollection = ParseGuid("A4C46780-499F-101B-BB78-00AA00383CBB");

/// @}

} // namespace ZLMIM::Component

#endif
