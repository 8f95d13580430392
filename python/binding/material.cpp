#include "binding.h"
#include "lists.h"

#include "zlmim/mesh/material.h"

namespace ZLMIM::Python
{

void BindMaterials(py::module_& module)
{
    BindWithList<Texture>(module, "Texture", "TextureList", "One texture of a material.")
        .def(py::init<>())
        .def_readwrite("texture_type", &Texture::TextureType,
                       "Role in the material, as stored: a TextureType, which may be any number.")
        .def_readwrite("name", &Texture::Name,
                       "File name without its path. The library never opens the file.")
        .def_readwrite("amount", &Texture::Amount, "Influence over the material as a whole, as stored.");

    py::class_<Material, std::shared_ptr<Material>>(
        module, "Material",
        "The appearance of a chunk's surface. All zero and empty if the chunk has no MATL block.")
        .def(py::init<>())
        .def_readwrite("version", &Material::Version,
                       "Version of the MATL block. Blocks of version 101 and below have no name,\n"
                       "num_properties, opacity and emissive.")
        .def_readwrite("num_properties", &Material::NumProperties, "Usually 0, as stored.")
        .def_readwrite("two_sided", &Material::TwoSided, "As stored: any number.")
        .def_readwrite("opacity", &Material::Opacity,
                       "1 is opaque. 0 also if the block doesn't contain it: see version.")
        .def_readwrite("specular_power", &Material::SpecularPower, "The file's integer, as a float.")
        .def_readwrite("textures", &Material::Textures, "Textures in file order: a TextureList.")
        .def_readwrite("name", &Material::Name,
                       "The name. The text after its \"m.\" determines the rendering method.")
        .def_readwrite("ambient", &Material::Ambient, "Ambient colour, a Colour.")
        .def_readwrite("diffuse", &Material::Diffuse, "Diffuse colour, a Colour.")
        .def_readwrite("specular", &Material::Specular, "Specular colour, a Colour.")
        .def_readwrite("emissive", &Material::Emissive, "Emissive colour, a Colour.");
}

} // namespace ZLMIM::Python
