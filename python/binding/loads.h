#pragma once

#include "casters.h"

#include "zlmim/model/errors.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <cstddef>
#include <memory>
#include <span>

namespace ZLMIM::Python
{

// Each throws the exception in Python that corresponds to the error, with the object as far as it was loaded.
[[noreturn]] void Throw(const BoundsError& error, const py::object& partial);
[[noreturn]] void Throw(const OverflowError& error, const py::object& partial);
[[noreturn]] void Throw(const FileSystemError& error, const py::object& partial);

/// Runs a load while other threads may run Python. `object` is the one that is loaded.
template <class Object, class Load>
auto RunLoad(const std::shared_ptr<Object>& object, const Load& load)
try
{
    const py::gil_scoped_release released;
    return load();
}
catch (const BoundsError& error)
{
    Throw(error, py::cast(object));
}
catch (const OverflowError& error)
{
    Throw(error, py::cast(object));
}
catch (const FileSystemError& error)
{
    Throw(error, py::cast(object));
}

/// The bytes of any contiguous buffer, which its owner can't resize meanwhile.
class Buffer
{
public:
    explicit Buffer(const py::object& owner)
    {
        if (PyObject_GetBuffer(owner.ptr(), &mView, PyBUF_SIMPLE) != 0)
            throw py::error_already_set();
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { PyBuffer_Release(&mView); }

    [[nodiscard]] std::span<const std::byte> Bytes() const
    {
        return {static_cast<const std::byte*>(mView.buf), static_cast<std::size_t>(mView.len)};
    }

private:
    Py_buffer mView{};
};

/// The ways to load a `Mesh` and an `Anim`.
template <class Object, class Binding>
void BindLoads(Binding& binding)
{
    binding
        .def(
            "load",
            [](const std::shared_ptr<Object>& object, const Path& path, std::int64_t memory,
               std::int64_t work)
            {
                return RunLoad(object,
                               [&]
                               {
                                   PathResolver paths;
                                   LoadBudget budget({memory, work});
                                   return object->Load(path.name, paths, budget);
                               });
            },
            py::arg("path"), py::kw_only(), py::arg("memory") = LoadLimits().Memory,
            py::arg("work") = LoadLimits().Work,
            "Loads the file. Letter case is ignored if there is no exact match.\n\n"
            "Returns True if the whole file was read, False if it is missing, unreadable or of another "
            "kind:\n"
            "see error_message. Properties keep what was read before a failure. memory (bytes of objects) "
            "and\n"
            "work (about a nanosecond each) limit the cost. Other threads run meanwhile.\n\n"
            "Raises BoundsError, OverflowError or MemoryError.")
        .def(
            "load_bytes",
            [](const std::shared_ptr<Object>& object, const py::object& data, const Path& name)
            {
                const Buffer buffer(data);
                return RunLoad(object, [&] { return object->LoadBytes(buffer.Bytes(), name.name); });
            },
            py::arg("data"), py::arg("name") = Path(),
            "Like load, for a file's content in memory: bytes or any other buffer, which is copied.\n"
            "name becomes file_name and isn't opened.");
}

} // namespace ZLMIM::Python
