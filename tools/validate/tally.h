#pragma once

#include "tools/common/text.h"

#include <cstdint>
#include <string>

namespace ZLMIM::Validate
{

/// Counts the things that one finding is about, and remembers the number of the first.
class Tally
{
public:
    void Note(std::int64_t number) noexcept
    {
        if (mCount++ == 0)
            mFirst = number;
    }

    [[nodiscard]] std::int64_t First() const noexcept { return mFirst; }
    [[nodiscard]] std::int64_t Count() const noexcept { return mCount; }

    /// "", or " (and 12 more)" to follow the message about the first.
    [[nodiscard]] std::string AndMore() const
    {
        return mCount > 1 ? " (and " + Tools::Number(mCount - 1) + " more)" : std::string();
    }

private:
    std::int64_t mFirst = 0;
    std::int64_t mCount = 0;
};

} // namespace ZLMIM::Validate
