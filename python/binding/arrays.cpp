#include "arrays.h"

#include <string>

namespace ZLMIM::Python
{

py::array ArrayFrom(const py::object& given, const py::dtype& type, const std::vector<py::ssize_t>& shape)
{
    using namespace py::literals;
    py::array array = py::module_::import("numpy").attr("asarray")(given);
    bool fits = array.ndim() == static_cast<py::ssize_t>(shape.size());
    for (std::size_t i = 0; fits && i < shape.size(); ++i)
        fits = shape[i] < 0 || array.shape(static_cast<py::ssize_t>(i)) == shape[i];
    if (!fits && array.size() != 0)
        throw py::value_error("the array has another shape: " + std::string(py::str(array.attr("shape"))));
    // An empty list has no kind of its own.
    return array.attr("astype")(type, "order"_a = "C", "copy"_a = false,
                                "casting"_a = array.size() == 0 ? "unsafe" : "same_kind");
}

} // namespace ZLMIM::Python
