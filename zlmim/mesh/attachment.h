#ifndef ZLMIM_MESH_ATTACHMENT_H
#define ZLMIM_MESH_ATTACHMENT_H

#include "zlmim/model/com_header.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <string>

namespace ZLMIM
{

/// Attachment point definition: a named place on a mesh where another mesh can be hung. A load makes one for
/// each entry of the ATCH block, and doesn't touch it again.
/// \ingroup meshes
class Attachment
{
public:
    /// Normally 100. No load writes it, so it is 0 there: the block's version is `Mesh::AttVersion`.
    std::int32_t Version = 0;
    /// What `MeshEntry` finds it by; may be empty, and need not be unique. A load puts it in lower case,
    /// unlike the names of bones.
    std::u16string Name;
    /// 4x3 matrix for rotation and position of the attachment, as stored.
    ZLMIM::Matrix Matrix;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM

#endif
