#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <type_traits>
#include <vector>

namespace ZLMIM::Python
{

namespace py = pybind11;

/// The type of an array's elements: records are rows of floats.
template <class Element>
using ScalarOf = std::conditional_t<std::is_same_v<Element, std::int32_t>, std::int32_t, float>;

/// A numpy array of that shape on memory of the object model, without a copy. It keeps `owner` alive.
template <class Scalar, class Owner>
py::array_t<Scalar> ViewOf(std::vector<py::ssize_t> shape, const Scalar* memory, std::shared_ptr<Owner> owner)
{
    using Reference = std::shared_ptr<Owner>;
    auto reference = std::make_unique<Reference>(std::move(owner));
    const py::capsule keeper(reference.get(),
                             [](void* kept) { std::unique_ptr<Reference>(static_cast<Reference*>(kept)); });
    static_cast<void>(reference.release()); // the capsule has it
    return py::array_t<Scalar>(std::move(shape), memory, keeper);
}

/// All elements of an array of the object model: (n,) for numbers, (n, fields) for records.
template <class Element>
py::array ViewOf(const std::shared_ptr<Element>& memory, std::size_t count)
{
    using Scalar = ScalarOf<Element>;
    std::vector<py::ssize_t> shape = {static_cast<py::ssize_t>(count)};
    if (!std::is_same_v<Element, Scalar>)
        shape.push_back(sizeof(Element) / sizeof(Scalar));
    return ViewOf(std::move(shape), reinterpret_cast<const Scalar*>(memory.get()), memory);
}

/// What was given as an array, converted like numpy's assignment of the same kind: contiguous, and of that
/// type and shape. A negative number in `shape` is any length.
/// @throws py::value_error for another shape, TypeError for another kind.
[[nodiscard]] py::array ArrayFrom(const py::object& given, const py::dtype& type,
                                  const std::vector<py::ssize_t>& shape);

/// The same for an array of elements.
template <class Element>
py::array ArrayFrom(const py::object& given)
{
    using Scalar = ScalarOf<Element>;
    std::vector<py::ssize_t> shape = {-1};
    if (!std::is_same_v<Element, Scalar>)
        shape.push_back(sizeof(Element) / sizeof(Scalar));
    return ArrayFrom(given, py::dtype::of<Scalar>(), shape);
}

} // namespace ZLMIM::Python
