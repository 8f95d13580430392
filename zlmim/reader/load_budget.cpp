#include "zlmim/reader/load_budget.h"

#include "zlmim/model/errors.h"

namespace ZLMIM
{

void LoadBudget::ThrowMemory() const
{
    throw BoundsError("the load takes more than " + std::to_string(mLimits.Memory) +
                          " bytes of memory (LoadLimits::Memory)",
                      mLimits.Memory);
}

void LoadBudget::ThrowWork() const
{
    throw BoundsError("the load takes more than " + std::to_string(mLimits.Work) +
                          " units of work (LoadLimits::Work)",
                      mLimits.Work);
}

} // namespace ZLMIM
