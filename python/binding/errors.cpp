#include "binding.h"
#include "loads.h"

#include "zlmim/model/text.h"

#include <exception>
#include <string>

namespace ZLMIM::Python
{
namespace
{

[[noreturn]] void Throw(const py::object& type, const py::object& error)
{
    PyErr_SetObject(type.ptr(), error.ptr());
    throw py::error_already_set();
}

/// The error's text, which begins with the file's name, with that in the system's form.
template <class Error>
py::str TextOf(const Error& error)
{
    const std::string text = error.what();
    const std::string name = ToUtf8(error.File());
    return text.starts_with(name) ? ToNativePath(error.File()) + text.substr(name.size()) : text;
}

} // namespace

void Throw(const BoundsError& error, const py::object& partial)
{
    const py::object type = Class("zlmim._errors", "BoundsError");
    Throw(type, type(TextOf(error), error.Position(), Path{error.File()}, partial));
}

void Throw(const OverflowError& error, const py::object& partial)
{
    const py::object type = Class("zlmim._errors", "OverflowError");
    Throw(type, type(TextOf(error), error.Sum(), Path{error.File()}, partial));
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
