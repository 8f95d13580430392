#include "binding.h"
#include "lists.h"
#include "loads.h"

#include "zlmim/mesh/mesh.h"

namespace ZLMIM::Python
{

void BindMesh(py::module_& module)
{
    BindWithList<Chunk>(module, "Chunk", "ChunkList", "The material and geometry of a part of a mesh.")
        .def(py::init<>())
        .def_readwrite("material", &Chunk::Material, "Appearance of its surface, a Material.")
        .def_readwrite("geometry", &Chunk::Geometry, "Its points, normals and faces, a Geometry.")
        .def_readwrite("version", &Chunk::Version, "Version of the CHNK block, as stored.")
        .def_readwrite("id", &Chunk::Id,
                       "The chunk's number in the file: not unique, nor its place in the list.");

    py::class_<Mesh, std::shared_ptr<Mesh>> mesh(
        module, "Mesh",
        "A mesh file (.im): its chunks, attachment points and skeleton. A new one is empty.\n\n"
        "One object takes one call at a time: load it on one thread, and let others read it afterwards.");
    mesh.def(py::init<>())
        .def_readwrite("error_message", &Mesh::ErrorMessage,
                       "Why the last load that has a text for it returned False. No load clears it.")
        .def_readwrite("chunk_count", &Mesh::ChunkCount,
                       "Number of chunks that the file declares; may be negative.")
        .def_readwrite("version", &Mesh::Version, "Version in the info block, as stored.")
        .def_readwrite("file_size", &Mesh::FileSize, "Length of the file in bytes.")
        .def_readwrite(
            "attachments", &Mesh::Attachments,
            "Attachment points in file order: an AttachmentList, or None before a load got that far.")
        .def_readwrite("chunks", &Mesh::Chunks,
                       "The chunks in file order: a ChunkList, or None before a load got that far.")
        .def_readwrite("root_bone", &Mesh::RootBone,
                       "Root of the skeleton: a Bone, or None if there is none.")
        .def_readwrite("att_version", &Mesh::AttVersion, "Version of the ATCH block, as stored.")
        .def_readwrite("polygons", &Mesh::Polygons,
                       "Number of triangles: the sum of the chunks' primitive counts as stored.")
        .def_property(
            "file_name", [](const Mesh& self) { return Path{self.FileName}; },
            [](Mesh& self, const Path& path) { self.FileName = path.name; },
            "The name passed to the last load, with the system's separators.")
        .def_readwrite("bone_count", &Mesh::BoneCount,
                       "Number of BONE blocks read by all loads of this object together.")
        .def_readwrite("vertex_count", &Mesh::VertexCount, "Sum of the chunks' vertex counts as stored.")
        .def_readwrite("texture_count", &Mesh::TextureCount,
                       "Sum of the materials' texture counts as stored.");
    BindLoads<Mesh>(mesh);
}

} // namespace ZLMIM::Python
