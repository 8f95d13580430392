#pragma once

#include "zlmim/model/com_header.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <string>

namespace ZLMIM
{

/// Attachment point definition: a named place on a mesh where another mesh can be attached. A load creates
/// one for each entry of the ATCH block. Later loads don't change it.
/// \ingroup meshes
class Attachment
{
public:
    /// Normally 100, but 0 after a load, which doesn't set it: the block's version is `Mesh::AttVersion`.
    std::int32_t Version = 0;
    /// The name by which `MeshEntry` finds it. May be empty, and need not be unique. A load converts it to
    /// lower case, unlike the names of bones.
    std::u16string Name;
    /// 4x3 matrix for rotation and position of the attachment, as stored.
    ZLMIM::Matrix Matrix;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM
