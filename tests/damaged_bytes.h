#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

namespace ZLMIM::Testing
{

/// A file's bytes with a few places changed: bytes, indices, and numbers such as NaN. The same seed gives the
/// same damage on every system.
inline std::string Damaged(std::string bytes, std::uint32_t seed)
{
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t end) { return random() % end; };
    constexpr std::array<std::uint32_t, 11> kNumbers = {
        0x7FC00000, 0x7F800000, 0xFF800000, 0x7F7FFFFF, 0x00000001, 0x80000000, // NaN to -0, as floats
        0,          1,          3,          0x10000,    0xFFFFFFFF};
    for (std::size_t left = 1 + below(8); left > 0; --left)
    {
        const std::size_t kind = below(5);
        const std::size_t size = kind == 0 ? 1 : kind == 1 ? 2 : kind == 4 ? 4 + below(60) : 4;
        if (bytes.size() < size)
            continue;
        char* const place = bytes.data() + below(bytes.size() - size + 1);
        if (kind == 4)
        {
            std::memset(place, 0, size);
            continue;
        }
        const auto number =
            kind < 3 ? static_cast<std::uint32_t>(random()) : kNumbers.at(below(kNumbers.size()));
        std::memcpy(place, &number, size);
    }
    return bytes;
}

} // namespace ZLMIM::Testing
