#pragma once

#include "zlmim/component/abi.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>

namespace ZLMIM::Component
{

/// \addtogroup hosts
/// @{

/// The identifier written as "01234567-89AB-CDEF-0123-456789ABCDEF".
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
                throw "an identifier consists of hexadecimal digits in capitals";
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

/// The identifier as text, in capitals and without braces.
[[nodiscard]] inline std::string ToString(const GUID& guid)
{
    std::string text;
    const auto put = [&](std::uint32_t number, int digits)
    {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
            text += "0123456789ABCDEF"[number >> shift & 15];
    };
    put(static_cast<std::uint32_t>(guid.Data1), 8);
    for (const std::uint16_t number : {guid.Data2, guid.Data3})
    {
        text += '-';
        put(number, 4);
    }
    for (int i = 0; i < 8; ++i)
    {
        if (i == 0 || i == 2)
            text += '-';
        put(guid.Data4[i], 2);
    }
    return text;
}

/// Whether two identifiers are equal.
[[nodiscard]] inline bool IsSame(const GUID& a, const GUID& b) noexcept
{
    return std::memcmp(&a, &b, sizeof(a)) == 0;
}

// clang-format off
/// All zeros, `IID_NULL` to many hosts.
inline constexpr GUID kNoInterface{};
inline constexpr GUID kIUnknown = ParseGuid("00000000-0000-0000-C000-000000000046"); ///< `IUnknown`
inline constexpr GUID kIDispatch = ParseGuid("00020400-0000-0000-C000-000000000046"); ///< `IDispatch`
inline constexpr GUID kIClassFactory = ParseGuid("00000001-0000-0000-C000-000000000046"); ///< `IClassFactory`
inline constexpr GUID kIEnumVariant = ParseGuid("00020404-0000-0000-C000-000000000046"); ///< `IEnumVARIANT`
inline constexpr GUID kIRecordInfo = ParseGuid("0000002F-0000-0000-C000-000000000046"); ///< `IRecordInfo`
inline constexpr GUID kIErrorInfo = ParseGuid("1CF2B120-547D-101B-8E65-08002B2BD119"); ///< `IErrorInfo`
inline constexpr GUID kISupportErrorInfo = ParseGuid("DF0B3D60-548F-101B-8E65-08002B2BD119"); ///< `ISupportErrorInfo`
inline constexpr GUID kCollection = ParseGuid("A4C46780-499F-101B-BB78-00AA00383CBB"); ///< `_Collection`
// clang-format on

/// @}

} // namespace ZLMIM::Component
