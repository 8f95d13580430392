#ifndef ZLMIM_MESH_MATERIAL_H
#define ZLMIM_MESH_MATERIAL_H

#include "zlmim/mesh/texture.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ZLMIM
{

/// Material used by a chunk: how its surface looks. A load fills it once, from the chunk's MATL block; a
/// chunk without one keeps it as a new one is, empty and all zero. Blocks of version 101 and below have a
/// short form without `Name`, `NumProperties`, `Opacity` and `Emissive`, which then stay empty or zero.
/// \ingroup meshes
class Material
{
public:
    Material() = default;
    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;
    ~Material() = default;

    /// Version of the MATL block, as stored.
    std::int32_t Version = 0;
    /// Usually 0. As stored; nothing is read by it.
    std::int32_t NumProperties = 0;
    /// As stored; not reduced to true and false.
    std::int32_t TwoSided = 0;
    /// 1 is opaque. 0 also where the block doesn't carry it (the short form).
    float Opacity = 0;
    /// The file's whole number, as a float.
    float SpecularPower = 0;
    /// Textures in file order. Made with the material; none only if a host writes none.
    std::shared_ptr<Collection<Texture>> Textures = std::make_shared<Collection<Texture>>();
    /// The text after the "m." in the name determines the rendering method used. Stored whole, path included.
    std::u16string Name;
    /// Ambient colour.
    rgbColour Ambient;
    /// Diffuse colour.
    rgbColour Diffuse;
    /// Specular colour.
    rgbColour Specular;
    /// Emissive colour.
    rgbColour Emissive;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM

#endif
