#include "zlmim/component/status.h"

#include "zlmim/component/platform.h"
#include "zlmim/model/errors.h"

#include <exception>
#include <new>
#include <stdexcept>

namespace ZLMIM::Component
{

HRESULT StatusOfException(const ClassInfo* source) noexcept
{
    constexpr auto kFileSystem = static_cast<HRESULT>(0x800A0000);
    const auto report = [source](HRESULT status, const char* text)
    {
        if (source)
            SetError(*source, text);
        return status;
    };
    try
    {
        throw;
    }
    catch (const Failure& failure)
    {
        return report(failure.status, failure.text);
    }
    catch (const BoundsError& error)
    {
        return report(DISP_E_BADINDEX, error.what());
    }
    catch (const OverflowError& error)
    {
        return report(DISP_E_OVERFLOW, error.what());
    }
    catch (const FileSystemError& error)
    {
        return report(kFileSystem + static_cast<HRESULT>(error.Number()), error.what());
    }
    catch (const std::bad_alloc&)
    {
        return report(E_OUTOFMEMORY, "out of memory");
    }
    catch (const std::invalid_argument& error)
    {
        return report(E_INVALIDARG, error.what());
    }
    catch (const std::exception& error)
    {
        return report(E_FAIL, error.what());
    }
    catch (...)
    {
        return report(E_FAIL, "unknown failure");
    }
}

} // namespace ZLMIM::Component
