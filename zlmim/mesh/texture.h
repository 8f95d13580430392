#ifndef ZLMIM_MESH_TEXTURE_H
#define ZLMIM_MESH_TEXTURE_H

#include "zlmim/model/com_header.h"
#include "zlmim/model/enumerations.h"

#include <string>

namespace ZLMIM
{

/// One texture of a material. A load makes one for each record of the MATL block, and doesn't touch it again.
/// \ingroup meshes
class Texture
{
public:
    /// Role in the material, as stored: any number.
    txtype TextureType = txtype::TEX_Ambient;
    /// File name without its path: what stands behind the last backslash, all of it without one. A forward
    /// slash parts nothing. The file is never opened.
    std::u16string Name;
    /// Influence over the material as a whole, as stored.
    float Amount = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM

#endif
