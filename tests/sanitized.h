#pragma once

namespace ZLMIM::Testing
{

/// Whether the tests are built with AddressSanitizer, and so with the other sanitizers of that preset.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kIsAddressSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kIsAddressSanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool kIsAddressSanitized = false;
#endif

} // namespace ZLMIM::Testing
