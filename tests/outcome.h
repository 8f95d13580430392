#ifndef ZLMIM_TESTS_OUTCOME_H
#define ZLMIM_TESTS_OUTCOME_H

#include "zlmim/model/errors.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace ZLMIM::Testing
{

inline constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::string_view kBounds = "BoundsError";
inline constexpr std::string_view kOverflow = "OverflowError";

/// What a call did: "true" or "false" if it answered so, "done" for any other answer, or "BoundsError" or
/// "OverflowError" for what it raised.
template <class Call>
std::string OutcomeOf(const Call& call)
try
{
    if constexpr (std::is_same_v<decltype(call()), bool>)
    {
        return call() ? "true" : "false";
    }
    else
    {
        static_cast<void>(call());
        return "done";
    }
}
catch (const BoundsError&)
{
    return "BoundsError";
}
catch (const OverflowError&)
{
    return "OverflowError";
}

} // namespace ZLMIM::Testing

#endif
