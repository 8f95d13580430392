#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/reader/load_limits.h"

#include <cstdint>
#include <string_view>

namespace ZLMIM
{

/// The remaining limits of one outermost load. Every step that has a cost is charged here first.
/// \ingroup limits
class LoadBudget
{
public:
    /// Starts with the full `limits`.
    explicit LoadBudget(const LoadLimits& limits = {}) noexcept
        : mLimits(limits), mMemory(limits.Memory), mWork(limits.Work)
    {
    }

    /// Charges memory that the loaded objects keep.
    /// @throws BoundsError if that exceeds `LoadLimits::Memory`.
    void ChargeMemory(std::int64_t bytes)
    {
        RequireMemory(bytes);
        mMemory -= bytes;
    }

    /// Charges the memory of one new object of each type.
    /// @throws BoundsError if that exceeds `LoadLimits::Memory`.
    template <class... Objects>
    void ChargeObjects()
    {
        ChargeMemory((... + (static_cast<std::int64_t>(sizeof(Objects)) + kObjectOverhead)));
    }

    /// Charges the memory of the characters of a text that is kept.
    /// @throws BoundsError if that exceeds `LoadLimits::Memory`.
    void ChargeText(std::u16string_view text)
    {
        ChargeMemory(static_cast<std::int64_t>(text.size() * sizeof(char16_t)));
    }

    /// Returns memory that was charged and is freed before the load ends.
    void ReturnMemory(std::int64_t bytes) noexcept { mMemory += bytes; }

    /// Checks that memory for temporary use is left, without charging it.
    /// @throws BoundsError if it would exceed `LoadLimits::Memory`.
    void RequireMemory(std::int64_t bytes) const
    {
        if (bytes > mMemory)
            ThrowLimit("the load takes more than ", mLimits.Memory, " bytes of memory (LoadLimits::Memory)");
    }

    /// Charges work.
    /// @throws BoundsError if that exceeds `LoadLimits::Work`.
    void ChargeWork(std::int64_t units)
    {
        if (units > mWork)
            ThrowLimit("the load takes more than ", mLimits.Work, " units of work (LoadLimits::Work)");
        mWork -= units;
    }

private:
    LoadLimits mLimits;
    std::int64_t mMemory;
    std::int64_t mWork;
};

} // namespace ZLMIM
