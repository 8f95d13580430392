#ifndef ZLMIM_COMPONENT_STATUS_H
#define ZLMIM_COMPONENT_STATUS_H

#include "zlmim/component/abi.h"

namespace ZLMIM::Component
{

/// A failure that has its status already.
struct Failure
{
    HRESULT status;
};

/// The status of the exception that is being handled: what a host sees in its place.
///
/// | Exception | Status |
/// |---|---|
/// | `BoundsError` | `DISP_E_BADINDEX` |
/// | `OverflowError` | `DISP_E_OVERFLOW` |
/// | `FileSystemError` | 0x800A0000 + its number |
/// | `std::bad_alloc` | `E_OUTOFMEMORY` |
/// | `std::invalid_argument` | `E_INVALIDARG` |
/// | all else | `E_FAIL` |
[[nodiscard]] HRESULT StatusOfException() noexcept;

/// Runs what may raise, and answers how it went.
template <class Action>
[[nodiscard]] HRESULT Guarded(const Action& action) noexcept
{
    try
    {
        action();
        return S_OK;
    }
    catch (...)
    {
        return StatusOfException();
    }
}

} // namespace ZLMIM::Component

#endif
