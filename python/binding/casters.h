#pragma once

#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"
#include "zlmim/reader/native_path.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <pybind11/pybind11.h>
#include <string>

// How values go between the two languages. Every source that binds something includes this header, so that
// all of them convert a type in the same way.

namespace ZLMIM::Python
{

namespace py = pybind11;

/// A name of a file in the object model's form. In Python it is a `str` or a `PathLike` with the system's
/// separators.
struct Path
{
    std::u16string name;
};

/// A class that is written in Python.
[[nodiscard]] inline py::object Class(const char* module, const char* name)
{
    return py::module_::import(module).attr(name);
}

/// Converts an enumeration, whose properties may hold any number. Derived classes name its class in Python.
template <class Enum>
class EnumCaster
{
protected:
    static bool ToNumber(py::handle source, bool convert, Enum& value)
    {
        py::detail::make_caster<std::int32_t> number;
        if (!number.load(source, convert))
            return false;
        value = static_cast<Enum>(static_cast<std::int32_t>(number));
        return true;
    }

    static py::handle ToMember(const char* name, Enum value)
    {
        return Class("zlmim._records", name)(static_cast<std::int32_t>(value)).release();
    }
};

/// Converts a record of floats: a named tuple in Python, or any sequence of as many numbers.
template <class Record>
class RecordCaster
{
protected:
    using Fields = std::array<float, sizeof(Record) / sizeof(float)>;

    static bool ToRecord(py::handle source, bool convert, Record& record)
    {
        if (!py::isinstance<py::sequence>(source) || py::isinstance<py::str>(source))
            return false;
        const auto sequence = py::reinterpret_borrow<py::sequence>(source);
        Fields fields{};
        if (sequence.size() != fields.size())
            return false;
        for (std::size_t i = 0; i < fields.size(); ++i)
        {
            py::detail::make_caster<float> field;
            if (!field.load(py::object(sequence[i]), convert))
                return false;
            fields[i] = static_cast<float>(field);
        }
        record = std::bit_cast<Record>(fields);
        return true;
    }

    static py::handle ToTuple(const char* name, const Record& record)
    {
        const auto fields = std::bit_cast<Fields>(record);
        py::tuple tuple(fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i)
            tuple[i] = fields[i];
        return Class("zlmim._records", name)(*tuple).release();
    }
};

} // namespace ZLMIM::Python

namespace pybind11::detail
{

/// Text, every character of it: pybind11's own would drop a byte order mark, and refuse a lone surrogate.
template <>
class type_caster<std::u16string>
{
public:
    PYBIND11_TYPE_CASTER(std::u16string, const_name("str"));

    bool load(handle source, bool)
    {
        if (!PyUnicode_Check(source.ptr()))
            return false;
        const auto bytes =
            reinterpret_steal<object>(PyUnicode_AsEncodedString(source.ptr(), "utf-16-le", "surrogatepass"));
        if (!bytes)
            throw error_already_set();
        value.resize(static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())) / sizeof(char16_t));
        std::memcpy(value.data(), PyBytes_AS_STRING(bytes.ptr()), value.size() * sizeof(char16_t));
        return true;
    }

    static handle cast(const std::u16string& text, return_value_policy, handle)
    {
        int littleEndian = -1;
        PyObject* const made = PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.data()),
                                                     static_cast<Py_ssize_t>(text.size() * sizeof(char16_t)),
                                                     "surrogatepass", &littleEndian);
        if (!made)
            throw error_already_set();
        return made;
    }
};

template <>
class type_caster<ZLMIM::Python::Path>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::Python::Path, const_name("str | bytes | os.PathLike"));

    bool load(handle source, bool)
    {
        PyObject* bytes = nullptr;
        if (!PyUnicode_FSConverter(source.ptr(), &bytes))
        {
            if (!PyErr_ExceptionMatches(PyExc_TypeError))
                throw error_already_set();
            PyErr_Clear();
            return false;
        }
        const auto path = reinterpret_steal<pybind11::bytes>(bytes);
        value.name = ZLMIM::FromNativePath(ZLMIM::NativePath(path));
        return true;
    }

    static handle cast(const ZLMIM::Python::Path& path, return_value_policy, handle)
    {
        const ZLMIM::NativePath native = ZLMIM::ToNativePath(path.name);
        PyObject* const made =
            PyUnicode_DecodeFSDefaultAndSize(native.data(), static_cast<Py_ssize_t>(native.size()));
        if (!made)
            throw error_already_set();
        return made;
    }
};

template <>
class type_caster<ZLMIM::PrimFlag> : ZLMIM::Python::EnumCaster<ZLMIM::PrimFlag>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::PrimFlag, const_name("PrimFlag"));
    bool load(handle source, bool convert) { return ToNumber(source, convert, value); }
    static handle cast(ZLMIM::PrimFlag flag, return_value_policy, handle)
    {
        return ToMember("PrimFlag", flag);
    }
};

template <>
class type_caster<ZLMIM::txtype> : ZLMIM::Python::EnumCaster<ZLMIM::txtype>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::txtype, const_name("TextureType"));
    bool load(handle source, bool convert) { return ToNumber(source, convert, value); }
    static handle cast(ZLMIM::txtype type, return_value_policy, handle)
    {
        return ToMember("TextureType", type);
    }
};

template <>
class type_caster<ZLMIM::Vector> : ZLMIM::Python::RecordCaster<ZLMIM::Vector>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::Vector, const_name("Vector"));
    bool load(handle source, bool convert) { return ToRecord(source, convert, value); }
    static handle cast(const ZLMIM::Vector& vector, return_value_policy, handle)
    {
        return ToTuple("Vector", vector);
    }
};

template <>
class type_caster<ZLMIM::Quaternion> : ZLMIM::Python::RecordCaster<ZLMIM::Quaternion>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::Quaternion, const_name("Quaternion"));
    bool load(handle source, bool convert) { return ToRecord(source, convert, value); }
    static handle cast(const ZLMIM::Quaternion& quaternion, return_value_policy, handle)
    {
        return ToTuple("Quaternion", quaternion);
    }
};

template <>
class type_caster<ZLMIM::rgbColour> : ZLMIM::Python::RecordCaster<ZLMIM::rgbColour>
{
public:
    PYBIND11_TYPE_CASTER(ZLMIM::rgbColour, const_name("Colour"));
    bool load(handle source, bool convert) { return ToRecord(source, convert, value); }
    static handle cast(const ZLMIM::rgbColour& colour, return_value_policy, handle)
    {
        return ToTuple("Colour", colour);
    }
};

/// Entries of a mesh table. Their class can make counted references to itself, and pybind11 then relies on
/// that instead of the reference that it is given. But an entry that a load created belongs to its table as a
/// whole, so only the given reference keeps it alive.
template <>
class type_caster<std::shared_ptr<ZLMIM::MeshEntry>>
    : public copyable_holder_caster<ZLMIM::MeshEntry, std::shared_ptr<ZLMIM::MeshEntry>>
{
public:
    static handle cast(const std::shared_ptr<ZLMIM::MeshEntry>& entry, return_value_policy, handle)
    {
        const handle object =
            type_caster_base<ZLMIM::MeshEntry>::cast(entry.get(), return_value_policy::reference, handle());
        if (!entry)
            return object;
        value_and_holder place = reinterpret_cast<instance*>(object.ptr())->get_value_and_holder();
        if (!place.holder_constructed())
        {
            new (std::addressof(place.holder<std::shared_ptr<ZLMIM::MeshEntry>>()))
                std::shared_ptr<ZLMIM::MeshEntry>(entry);
            place.set_holder_constructed();
            place.inst->owned = true;
        }
        return object;
    }
};

} // namespace pybind11::detail
