#pragma once

#include "zlmim/component/class_info.h"

#include <cstddef>

namespace ZLMIM::Component
{

/// Thrown for a failure that has its status already. `text` says in English what is wrong.
struct Failure
{
    HRESULT status;
    const char* text;
};

/// Thrown for an argument of a call by name that can't be converted. `position` counts the parameters from 0.
struct BadArgument
{
    HRESULT status;
    std::size_t position;
};

/// The status that a host gets for the exception being handled. If `source` isn't null, also makes the
/// exception's text the thread's error, with the class as its source.
///
/// | Exception | Status |
/// |---|---|
/// | `BoundsError` | `DISP_E_BADINDEX` |
/// | `OverflowError` | `DISP_E_OVERFLOW` |
/// | `FileSystemError` | 0x800A0000 + its number |
/// | `std::bad_alloc` | `E_OUTOFMEMORY` |
/// | `std::invalid_argument` | `E_INVALIDARG` |
/// | any other | `E_FAIL` |
[[nodiscard]] HRESULT StatusOfException(const ClassInfo* source) noexcept;

/// Runs `action` and turns an exception into a status.
template <class Action>
[[nodiscard]] HRESULT Guarded(const Action& action, const ClassInfo* source = nullptr) noexcept
{
    try
    {
        action();
        return S_OK;
    }
    catch (...)
    {
        return StatusOfException(source);
    }
}

} // namespace ZLMIM::Component
