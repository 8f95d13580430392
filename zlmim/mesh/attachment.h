#ifndef ZLMIM_MESH_ATTACHMENT_H
#define ZLMIM_MESH_ATTACHMENT_H

#include "zlmim/model/facade.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <string>

namespace ZLMIM
{

/// Attachment point definition: a named place on a mesh where another mesh can be hung.
class Attachment
{
public:
    /// Normally 100. The reader doesn't write it: 0 after a load. The block's version is `Mesh.AttVersion`.
    std::int32_t Version = 0;
    /// In lower case after a load.
    std::u16string Name;
    /// 4x3 matrix for rotation and position of the attachment, as stored.
    ZLMIM::Matrix Matrix;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;
};

} // namespace ZLMIM

#endif
