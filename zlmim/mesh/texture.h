#pragma once

#include "zlmim/model/com_header.h"
#include "zlmim/model/enumerations.h"

#include <string>

namespace ZLMIM
{

/// One texture of a material. A load creates one for each record of the MATL block. Later loads don't change
/// it.
/// \ingroup meshes
class Texture
{
public:
    /// Role in the material, as stored: any number.
    txtype TextureType = txtype::TEX_Ambient;
    /// File name without its path: the text after the last backslash, or all of it if there is no backslash.
    /// A forward slash isn't a separator. The file is never opened.
    std::u16string Name;
    /// Influence over the material as a whole, as stored.
    float Amount = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM
