#include "binding.h"
#include "files.h"
#include "lists.h"
#include "loads.h"

#include "zlmim/config/zlm_model.h"

namespace ZLMIM::Python
{
namespace
{

void BindEntry(py::class_<MeshEntry, std::shared_ptr<MeshEntry>>& entry)
{
    entry.def(py::init<>())
        .def_readwrite("mesh", &MeshEntry::Mesh, "Its Mesh, loaded or not.")
        .def_readwrite("anim", &MeshEntry::anim,
                       "Its Anim, whose root_bone is None if the entry has no animation.")
        .def_readwrite("name", &MeshEntry::Name,
                       "The name by which a later entry finds it; in lower case after a load.")
        .def_property("att_parent", &MeshEntry::AttParent, &MeshEntry::SetAttParent,
                      "The entry of the same table that this entry hangs on, or None.")
        .def_readwrite("att", &MeshEntry::Att,
                       "The Attachment of att_parent's mesh that this entry hangs on, or None.")
        .def_property("parent", &MeshEntry::Parent, &MeshEntry::SetParent,
                      "The model whose mesh_table holds the entry; None before a load.")
        .def(
            "load",
            [](const std::shared_ptr<MeshEntry>& self, const std::shared_ptr<ZLMModel>& model,
               const std::u16string& name, const Path& meshFile, const Path& animFile,
               std::u16string attParent, std::u16string attName) {
                RunLoad(self,
                        [&] { self->Load(model, name, meshFile.name, animFile.name, attParent, attName); });
            },
            py::arg("model"), py::arg("name"), py::arg("mesh_file"), py::arg("anim_file") = Path(),
            py::arg("att_parent") = std::u16string(), py::arg("att_name") = std::u16string(),
            "Appends this entry to the model's table, loads its files, and links it to the first entry "
            "named\n"
            "att_parent in the table, and to the point named att_name of that entry's mesh.\n\n"
            "An entry that you made yourself and its model then keep each other: untie them by\n"
            "entry.parent = None when you are done (and att_parent, if it hangs on itself).\n"
            "Raises BoundsError, OverflowError or MemoryError.");
}

void BindZLMModel(py::class_<ZLMModel, std::shared_ptr<ZLMModel>>& model)
{
    model
        .def(py::init([](const py::object& files)
                      { return std::make_shared<ZLMModel>(files.is_none() ? nullptr : HostFiles(files)); }),
             py::arg("files") = py::none())
        .def_property("mesh_table", &ZLMModel::MeshTable, &ZLMModel::SetMeshTable,
                      "The entries of all blocks mesh-table, in file order: a MeshEntryList.")
        .def_readwrite(
            "asset_file_name", &ZLMModel::AssetFileName,
            "Value of asset-filename: the only mesh of an asset without a mesh table, without .im.")
        .def_readwrite("author", &ZLMModel::Author, "Value of author.")
        .def_readwrite("user_name", &ZLMModel::UserName, "Value of username.")
        .def_readwrite("kind", &ZLMModel::Kind, "Value of kind.")
        .def_readwrite("description", &ZLMModel::Description,
                       "Value of description; its lines are separated by CR LF.")
        .def_readwrite("zlm_build", &ZLMModel::ZLMBuild, "Value of zelmar-build, a text.")
        .def_readwrite("bogies", &ZLMModel::Bogies,
                       "One model for each key that begins with bogey, in file order: a ModelList. An asset\n"
                       "that wasn't found is an empty model; one referred to twice is the same object twice.")
        .def_readwrite("bogie_names", &ZLMModel::BogieNames,
                       "The keys of the entries of bogies, in lower case: a TextList.")
        .def_readwrite("pantograph", &ZLMModel::Pantograph,
                       "The model that the key pantograph refers to, or None without such a key.")
        .def_property("kuid", &ZLMModel::kuid, &ZLMModel::SetKuid,
                      "The asset's identifier, without blanks at its ends and in lower case.")
        .def_readwrite("limits", &ZLMModel::Limits, "Maximum cost of one load: LoadLimits.")
        .def(
            "load",
            [](const std::shared_ptr<ZLMModel>& self, const Path& path)
            { RunLoad(self, [&] { self->Load(path.name); }); },
            py::arg("path"),
            "Loads the config file of that name, with all meshes, animations and assets that it names.\n\n"
            "All earlier content is cleared first. A file that doesn't exist leaves the model empty; "
            "load_asset\n"
            "raises LoadError instead. Names of animations, and of the folders that are searched first for\n"
            "references, are relative to the process's working folder; load_asset takes the asset's own "
            "folder\n"
            "instead. Other threads run meanwhile.\n\n"
            "Raises BoundsError, OverflowError, FileSystemError, MemoryError, and what a file system "
            "raises.");
}

/// What a path leads to: null, or whether it is a regular file, and its path as it is spelt on disk.
py::object Find(const Path& path)
{
    PathResolver paths;
    for (const auto kind : {FoundFile::Kind::File, FoundFile::Kind::Folder, FoundFile::Kind::Other})
    {
        if (const auto found = paths.Find(path.name, kind))
            return py::make_tuple(kind == FoundFile::Kind::File, Path{FromNativePath(found->nativePath)});
    }
    return py::none();
}

} // namespace

void BindModel(py::module_& module)
{
    const LoadLimits defaults;
    py::class_<LoadLimits>(module, "LoadLimits",
                           "The maximum cost of one load. Exceeding it raises BoundsError.")
        .def(py::init(
                 [](std::int64_t memory, std::int64_t work) {
                     return LoadLimits{memory, work};
                 }),
             py::kw_only(), py::arg("memory") = defaults.Memory, py::arg("work") = defaults.Work)
        .def_readwrite("memory", &LoadLimits::Memory, "Bytes of objects.")
        .def_readwrite("work", &LoadLimits::Work, "Units of work, about a nanosecond each.");

    auto entry = BindWithList<MeshEntry>(
        module, "MeshEntry", "MeshEntryList",
        "An entry of a model's mesh table: a mesh, an animation, and the attachment point that it hangs "
        "on.\n\n"
        "Keeping an entry of a loaded model keeps the model.");
    auto model = BindWithList<ZLMModel>(
        module, "ZLMModel", "ModelList",
        "A config file (config.txt), the description of an asset: its identity, its mesh table, and the\n"
        "assets that it refers to as further models. A new one is empty.\n\n"
        "files, a FileSystem, reads config files; without one they are on the disk. Meshes and animations\n"
        "always are. One object takes one call at a time.");
    BindList<std::u16string>(module, "TextList", "A list of texts.");
    BindEntry(entry);
    BindZLMModel(model);

    module.def("_asset_model", [] { return std::make_shared<ZLMModel>(AssetFiles()); });
    module.def("_find", &Find);
    module.attr("_UNTRUSTED_LIMITS") = py::make_tuple(kUntrustedLimits.Memory, kUntrustedLimits.Work);
}

} // namespace ZLMIM::Python
