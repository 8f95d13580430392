#include "binding.h"
#include "loads.h"

#include <exception>

namespace ZLMIM::Python
{
namespace
{

[[noreturn]] void Throw(const py::object& type, const py::object& error)
{
    PyErr_SetObject(type.ptr(), error.ptr());
    throw py::error_already_set();
}

} // namespace

void Throw(const BoundsError& error, const py::object& partial)
{
    const py::object type = Class("zlmim._errors", "BoundsError");
    Throw(type, type(error.what(), error.Position(), Path{error.File()}, partial));
}

void Throw(const OverflowError& error, const py::object& partial)
{
    const py::object type = Class("zlmim._errors", "OverflowError");
    Throw(type, type(error.what(), error.Sum(), Path{error.File()}, partial));
}

void Throw(const FileSystemError& error, const py::object& partial)
{
    const py::object type = Class("zlmim._errors", "FileSystemError");
    Throw(type, type(static_cast<std::int32_t>(error.Number()), Path{error.Path()}, partial));
}

void BindErrors()
{
    // Errors outside a load.
    py::register_local_exception_translator(
        [](std::exception_ptr thrown)
        {
            try
            {
                try
                {
                    std::rethrow_exception(thrown);
                }
                catch (const BoundsError& error)
                {
                    Throw(error, py::none());
                }
                catch (const OverflowError& error)
                {
                    Throw(error, py::none());
                }
                catch (const FileSystemError& error)
                {
                    Throw(error, py::none());
                }
            }
            catch (py::error_already_set& error)
            {
                error.restore();
            }
        });
}

} // namespace ZLMIM::Python
