#ifndef ZLMIM_MESH_TEXTURE_H
#define ZLMIM_MESH_TEXTURE_H

#include "zlmim/model/enumerations.h"
#include "zlmim/model/facade.h"

#include <string>

namespace ZLMIM
{

/// One texture of a material.
class Texture
{
public:
    /// Role in the material, as stored: any number.
    txtype TextureType = txtype::TEX_Ambient;
    /// File name without any path (what stood behind the last backslash). The file is never opened.
    std::u16string Name;
    /// Influence over the material as a whole.
    float Amount = 0;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;
};

} // namespace ZLMIM

#endif
