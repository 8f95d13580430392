#include "zlmim/component/guid_text.h"

#include <cstdint>

namespace ZLMIM::Component
{

std::string ToString(const GUID& guid)
{
    std::string text;
    const auto put = [&](std::uint32_t number, int digits)
    {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
            text += "0123456789ABCDEF"[number >> shift & 15];
    };
    put(static_cast<std::uint32_t>(guid.Data1), 8);
    text += '-';
    put(guid.Data2, 4);
    text += '-';
    put(guid.Data3, 4);
    for (int i = 0; i < 8; ++i)
    {
        if (i == 0 || i == 2)
            text += '-';
        put(guid.Data4[i], 2);
    }
    return text;
}

} // namespace ZLMIM::Component
