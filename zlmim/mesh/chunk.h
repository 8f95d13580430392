#ifndef ZLMIM_MESH_CHUNK_H
#define ZLMIM_MESH_CHUNK_H

#include "zlmim/mesh/geometry.h"
#include "zlmim/mesh/material.h"
#include "zlmim/model/com_header.h"

#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// The material and geometry for part of the mesh. Each load makes new chunks, and doesn't touch those of the
/// load before.
/// \ingroup meshes
class Chunk
{
public:
    /// How its surface looks. Made with the chunk; stays as made where the file has no MATL block for it.
    /// None only if a host writes none.
    std::shared_ptr<ZLMIM::Material> Material = std::make_shared<ZLMIM::Material>();
    /// Its points, normals and faces. Made with the chunk; stays as made where the file has no GEOM block for
    /// it. None only if a host writes none.
    std::shared_ptr<ZLMIM::Geometry> Geometry = std::make_shared<ZLMIM::Geometry>();
    /// Version of the CHNK block, as stored.
    std::int32_t Version = 0;
    /// The chunk's number in the file, as stored: neither unique nor its place in the list.
    std::int32_t Id = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM

#endif
