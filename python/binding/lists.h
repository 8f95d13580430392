#pragma once

#include "casters.h"

#include "zlmim/model/collection.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace ZLMIM::Python
{

/// The number of an entry, from 1, for an index from 0 or, if it is negative, from the end.
template <class List>
std::int32_t NumberOf(const List& list, py::ssize_t index)
{
    if (index < 0)
        index += list.Count();
    if (index < 0 || index >= list.Count())
        throw py::index_error("list index out of range");
    return static_cast<std::int32_t>(index + 1);
}

/// Binds a list as a sequence. The package adds what `collections.abc.Sequence` makes of these methods.
template <class T>
void BindList(py::module_& module, const char* name, const char* documentation)
{
    using List = Collection<T>;
    py::class_<List, std::shared_ptr<List>>(module, name, documentation)
        .def(py::init<>())
        .def("__len__", &List::Count)
        .def("__getitem__",
             [](const List& list, py::ssize_t index) { return list.Item(NumberOf(list, index)); })
        .def("__getitem__",
             [](const List& list, const py::slice& slice)
             {
                 py::ssize_t start = 0;
                 py::ssize_t stop = 0;
                 py::ssize_t step = 0;
                 py::ssize_t count = 0;
                 if (!slice.compute(list.Count(), &start, &stop, &step, &count))
                     throw py::error_already_set();
                 py::list entries;
                 for (; count > 0; --count, start += step)
                     entries.append(list.Item(static_cast<std::int32_t>(start + 1)));
                 return entries;
             })
        .def("__delitem__", [](List& list, py::ssize_t index) { list.Remove(NumberOf(list, index)); })
        .def(
            "append", [](List& list, typename List::Entry entry) { list.Add(std::move(entry)); },
            py::arg("entry"), "Adds an entry at the end.");
}

/// Begins to bind a class, and binds the list of its objects.
template <class T>
py::class_<T, std::shared_ptr<T>> BindWithList(py::module_& module, const char* name, const char* list,
                                               const char* documentation)
{
    py::class_<T, std::shared_ptr<T>> bound(module, name, documentation);
    BindList<T>(module, list, ("A list of " + std::string(name) + " objects.").c_str());
    return bound;
}

} // namespace ZLMIM::Python
