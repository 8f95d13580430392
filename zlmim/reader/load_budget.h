#ifndef ZLMIM_READER_LOAD_BUDGET_H
#define ZLMIM_READER_LOAD_BUDGET_H

#include "zlmim/reader/load_limits.h"

#include <cstddef>
#include <cstdint>

namespace ZLMIM
{

/// What is left of the limits of one outermost load. Every step that costs something charges it here first.
/// \ingroup limits
class LoadBudget
{
public:
    /// All of `limits`.
    explicit LoadBudget(const LoadLimits& limits = {}) noexcept
        : mLimits(limits), mMemory(limits.Memory), mWork(limits.Work)
    {
    }

    /// Takes memory that stays with the loaded objects.
    /// @throws BoundsError where that exceeds `LoadLimits::Memory`.
    void ChargeMemory(std::int64_t bytes)
    {
        RequireMemory(bytes);
        mMemory -= bytes;
    }

    /// Takes the memory of new objects of these types.
    /// @throws BoundsError where that exceeds `LoadLimits::Memory`.
    template <class... Objects>
    void ChargeObjects()
    {
        ChargeMemory((... + (static_cast<std::int64_t>(sizeof(Objects)) + kObjectOverhead)));
    }

    /// Gives back memory that was charged and is freed before the load ends.
    void ReturnMemory(std::int64_t bytes) noexcept { mMemory += bytes; }

    /// Tests that memory which is needed for a moment is left, but doesn't take it.
    /// @throws BoundsError where it would exceed `LoadLimits::Memory`.
    void RequireMemory(std::int64_t bytes) const
    {
        if (bytes > mMemory)
            ThrowMemory();
    }

    /// Takes work.
    /// @throws BoundsError where that exceeds `LoadLimits::Work`.
    void ChargeWork(std::int64_t units)
    {
        if (units > mWork)
            ThrowWork();
        mWork -= units;
    }

private:
    [[noreturn]] void ThrowMemory() const;
    [[noreturn]] void ThrowWork() const;

    LoadLimits mLimits;
    std::int64_t mMemory;
    std::int64_t mWork;
};

} // namespace ZLMIM

#endif
