#include "zlmim/component/status.h"

#include "zlmim/model/errors.h"

#include <new>
#include <stdexcept>

namespace ZLMIM::Component
{

HRESULT StatusOfException() noexcept
{
    constexpr auto kFileSystem = static_cast<HRESULT>(0x800A0000);
    try
    {
        throw;
    }
    catch (const Failure& failure)
    {
        return failure.status;
    }
    catch (const BoundsError&)
    {
        return DISP_E_BADINDEX;
    }
    catch (const OverflowError&)
    {
        return DISP_E_OVERFLOW;
    }
    catch (const FileSystemError& error)
    {
        return kFileSystem + static_cast<HRESULT>(error.Number());
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
    catch (const std::invalid_argument&)
    {
        return E_INVALIDARG;
    }
    catch (...)
    {
        return E_FAIL;
    }
}

} // namespace ZLMIM::Component
