#include "arrays.h"
#include "binding.h"
#include "lists.h"

#include "zlmim/mesh/bone.h"
#include "zlmim/mesh/geometry.h"

#include <cstring>

namespace ZLMIM::Python
{
namespace
{

/// One of the three arrays of a geometry as a property.
template <class Element, class Get, class Share, class SetCount>
void BindArray(py::class_<Geometry, std::shared_ptr<Geometry>>& binding, const char* name, Get get,
               Share share, SetCount setCount, const char* documentation)
{
    binding.def_property(
        name,
        [=](Geometry& geometry) { return ViewOf<Element>((geometry.*share)(), (geometry.*get)().size()); },
        [=](Geometry& geometry, const py::object& given)
        {
            const py::array array = ArrayFrom<Element>(given);
            const auto count = static_cast<std::size_t>(array.nbytes()) / sizeof(Element);
            if (count > std::size_t{std::numeric_limits<std::int32_t>::max()})
                throw py::value_error("the array is too long");
            (geometry.*setCount)(static_cast<std::int32_t>(count));
            if (count > 0)
                std::memcpy((geometry.*share)().get(), array.data(), count * sizeof(Element));
        },
        documentation);
}

py::object FaceNormals(const Geometry& geometry)
{
    if (!geometry.FaceNormals)
        return py::none();
    return ViewOf(geometry.FaceNormals->ShareEntries(), geometry.FaceNormals->Entries().size());
}

void SetFaceNormals(Geometry& geometry, const py::object& given)
{
    const py::array array = ArrayFrom<Vector>(given);
    auto normals = std::make_shared<Collection<Vector>>();
    normals->AppendBytes(static_cast<const unsigned char*>(array.data()),
                         static_cast<std::size_t>(array.nbytes()) / sizeof(Vector));
    geometry.FaceNormals = std::move(normals);
}

} // namespace

void BindGeometry(py::module_& module)
{
    py::class_<Geometry, std::shared_ptr<Geometry>> geometry(
        module, "Geometry",
        "The points, normals and faces of one chunk, as stored. Nothing is checked against another.\n\n"
        "Arrays are views: what you write into one changes the geometry. A view stays valid whatever "
        "happens\n"
        "to its geometry, which may get another array; the view then shows the old one. Assigning an array\n"
        "copies it, and sets the count.");
    geometry.def(py::init<>())
        .def_readwrite("version", &Geometry::Version, "Version of the GEOM block, as stored.")
        .def_readwrite("area", &Geometry::Area, "As stored. The library gives it no meaning.")
        .def_property("face_normals", &FaceNormals, &SetFaceNormals,
                      "Face normals: numpy, float32, shape (n, 3), columns x, y, z. A view.\n\n"
                      "Their number comes from the file, not from the primitives.")
        .def_readwrite("primitive_count", &Geometry::PrimitiveCount,
                       "Number of primitives, as stored: not derived from the indices.")
        .def_readwrite("max_infl", &Geometry::MaxInfl, "As stored. The library gives it no meaning.")
        .def_readwrite(
            "primitive_type", &Geometry::PrimitiveType,
            "The kind of primitive that the indices describe: a PrimFlag, which may be any number.")
        .def_readwrite("bone", &Geometry::Bone,
                       "Name of the bone that the chunk hangs from, as stored; empty if it has none.")
        .def_readwrite(
            "bone_object", &Geometry::BoneObject,
            "The bone of exactly that name in the mesh's skeleton: the same object as in the tree.\n"
            "None if there is no such bone.")
        .def_property(
            "max_vertices", &Geometry::MaxVertices, &Geometry::SetMaxVertices,
            "Number of vertices: a count, may be negative. Setting a count above 0 makes a new array\n"
            "of zeroes.")
        .def_property("max_vert_normal", &Geometry::MaxVertNormal, &Geometry::SetMaxVertNormal,
                      "Number of vertex normals: a count, set like max_vertices.")
        .def_property("max_index", &Geometry::MaxIndex, &Geometry::SetMaxIndex,
                      "Number of indices: a count, set like max_vertices.");
    BindArray<Vertex>(geometry, "vertices", &Geometry::Vertices, &Geometry::ShareVertices,
                      &Geometry::SetMaxVertices,
                      "Vertices: numpy, float32, shape (n, 5), columns x, y, z, u, v. A view.\n\n"
                      "x, y, z are the position; u, v the texture coordinate.");
    BindArray<Vector>(geometry, "vertex_normals", &Geometry::VertexNormals, &Geometry::ShareVertexNormals,
                      &Geometry::SetMaxVertNormal,
                      "Vertex normals: numpy, float32, shape (n, 3), columns x, y, z. A view.\n\n"
                      "The normal of a vertex has the vertex's index. Need not be of unit length.");
    BindArray<std::int32_t>(
        geometry, "indices", &Geometry::Indices, &Geometry::ShareIndices, &Geometry::SetMaxIndex,
        "Indices: numpy, int32, shape (n,). A view.\n\n"
        "Numbers of vertices from 0, as primitive_type groups them, or any other number that the file has.\n"
        "Files store 16 bits with a sign: vertices from 32768 on come out negative, index & 0xFFFF is "
        "right.");
}

} // namespace ZLMIM::Python
