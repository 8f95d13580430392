#pragma once

#include "zlmim/mesh/texture.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace ZLMIM
{

/// Material used by a chunk: the appearance of its surface. A load fills it from the chunk's MATL block. If a
/// chunk has no such block, its material keeps its initial values: empty and all zero. Blocks of version 101
/// and below have a short form without `Name`, `NumProperties`, `Opacity` and `Emissive`, which then stay
/// empty or zero.
/// \ingroup meshes
class Material
{
public:
    Material() = default;
    /// With this list as its `Textures`.
    explicit Material(std::shared_ptr<Collection<Texture>> textures) : Textures(std::move(textures)) {}
    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;
    ~Material() = default;

    /// Version of the MATL block, as stored.
    std::int32_t Version = 0;
    /// Usually 0, as stored. Nothing is read depending on it.
    std::int32_t NumProperties = 0;
    /// As stored; not converted to true and false.
    std::int32_t TwoSided = 0;
    /// 1 is opaque. 0 also if the block doesn't contain it (the short form).
    float Opacity = 0;
    /// The file's integer, as a float.
    float SpecularPower = 0;
    /// Textures in file order. Created with the material; null only if a host writes null.
    std::shared_ptr<Collection<Texture>> Textures = std::make_shared<Collection<Texture>>();
    /// The text after the "m." in the name determines the rendering method used. Stored completely, path
    /// included.
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
