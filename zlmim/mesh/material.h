#ifndef ZLMIM_MESH_MATERIAL_H
#define ZLMIM_MESH_MATERIAL_H

#include "zlmim/mesh/texture.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/facade.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ZLMIM
{

/// Material used by a chunk. Blocks of version 101 and below have a short form without `Name`,
/// `NumProperties`, `Opacity` and `Emissive`, which then stay empty or zero.
class Material
{
public:
    Material() = default;
    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;
    ~Material() = default;

    /// Version of the MATL block; 0 if the chunk has none.
    std::int32_t Version = 0;
    /// Usually 0.
    std::int32_t NumProperties = 0;
    /// As stored; not reduced to true and false.
    std::int32_t TwoSided = 0;
    /// 1 is opaque. 0 also where the block doesn't carry it (the short form).
    float Opacity = 0;
    /// The file's whole number, as a float.
    float SpecularPower = 0;
    /// Textures in file order, never none unless a host writes none.
    std::shared_ptr<Collection<Texture>> Textures = std::make_shared<Collection<Texture>>();
    /// The text after the "m." in the name determines the rendering method used. Stored whole, path included.
    std::u16string Name;
    rgbColour Ambient;
    rgbColour Diffuse;
    rgbColour Specular;
    rgbColour Emissive;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;
};

} // namespace ZLMIM

#endif
