#include "arrays.h"
#include "binding.h"
#include "lists.h"

#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"

#include <cstring>

namespace ZLMIM::Python
{
namespace
{

const std::vector<py::ssize_t> kMatrixShape = {4, 3};

void SetMatrix(Attachment& attachment, const py::object& given)
{
    const py::array matrix = ArrayFrom(given, py::dtype::of<float>(), kMatrixShape);
    if (matrix.nbytes() != sizeof(Matrix))
        throw py::value_error("a matrix has the shape (4, 3)");
    std::memcpy(&attachment.Matrix, matrix.data(), sizeof(Matrix));
}

} // namespace

void BindSkeleton(py::module_& module)
{
    BindWithList<Attachment>(module, "Attachment", "AttachmentList",
                             "A named place on a mesh where another mesh can be attached.")
        .def(py::init<>())
        .def_readwrite("version", &Attachment::Version,
                       "0 after a load: the block's version is Mesh.att_version.")
        .def_readwrite("name", &Attachment::Name,
                       "The name by which an entry of a mesh table finds it; in lower case after a load.")
        .def_property(
            "matrix",
            [](const std::shared_ptr<Attachment>& attachment)
            { return ViewOf(kMatrixShape, &attachment->Matrix.m11, attachment); },
            &SetMatrix,
            "Rotation and position: numpy, float32, shape (4, 3), a view.\n\n"
            "Rows 0 to 2 hold the rotation, row 3 the position in the mesh's units. It places points (n, 3) "
            "by\n"
            "points @ matrix[:3] + matrix[3].");

    auto bone = BindWithList<Bone>(
        module, "Bone", "BoneList",
        "A bone of a mesh. Keeping one of a loaded skeleton keeps all of them, up and down.\n\n"
        "If you make two objects refer to each other yourself, untie them when you are done:\n"
        "bone.parent = None. Nothing else can free them.");
    bone.def(py::init<>())
        .def_property("children", &Bone::Children, &Bone::SetChildren,
                      "Child bones in file order: a BoneList. Writing it doesn't change any parent.")
        .def_readwrite("name", &Bone::Name, "As stored, letter case included; need not be unique.")
        .def_readwrite("version", &Bone::Version, "Version of the BONE block, as stored.")
        .def_property("parent", &Bone::Parent, &Bone::SetParent,
                      "The bone whose children hold this one; None on the root. Writing it changes no list.")
        .def_readwrite("position", &Bone::Position, "Position relative to the parent, as stored: a Vector.")
        .def_readwrite("rotation", &Bone::Rotation,
                       "Rotation relative to the parent, as stored: a Quaternion, not normalised, and all\n"
                       "zero on a new bone.")
        .def(
            "to_matrix",
            [](const Bone& self)
            {
                const auto matrix = std::make_shared<Matrix>(self.ToMatrix());
                return ViewOf(kMatrixShape, &matrix->m11, matrix);
            },
            "Rotation and position of this bone alone, without its parents: numpy, float32, shape (4, 3).\n\n"
            "Used like Attachment.matrix. Rotates by the conjugate of rotation.");
}

} // namespace ZLMIM::Python
