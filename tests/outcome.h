#pragma once

#include "zlmim/model/errors.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace ZLMIM::Testing
{

inline constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::string_view kBounds = "BoundsError";
inline constexpr std::string_view kOverflow = "OverflowError";

/// Result of a call: "true" or "false" if it returned that, "done" for any other result, or the name of the
/// error that it threw, such as "BoundsError" or "FileSystemError 76".
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
catch (const FileSystemError& error)
{
    return "FileSystemError " + std::to_string(static_cast<std::int32_t>(error.Number()));
}

/// The position of the BoundsError, or the sum of the OverflowError, that a call throws; empty if it throws
/// neither.
template <class Call>
std::optional<std::int64_t> ErrorPosition(const Call& call)
try
{
    static_cast<void>(call());
    return std::nullopt;
}
catch (const BoundsError& error)
{
    return error.Position();
}
catch (const OverflowError& error)
{
    return error.Sum();
}

} // namespace ZLMIM::Testing
