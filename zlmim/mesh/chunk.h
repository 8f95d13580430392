#pragma once

#include "zlmim/mesh/geometry.h"
#include "zlmim/mesh/material.h"
#include "zlmim/model/com_header.h"

#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// The material and geometry for part of the mesh. Each load creates new chunks, and doesn't change those of
/// an earlier load.
/// \ingroup meshes
class Chunk
{
public:
    /// Creates its material and its geometry in one block of memory, and their lists in another: a mesh may
    /// have thousands of chunks. So a reference to one keeps the other alive.
    Chunk();

    /// Appearance of its surface. Created with the chunk; keeps its initial values if the file has no MATL
    /// block for it. Null only if a host writes null.
    std::shared_ptr<ZLMIM::Material> Material;
    /// Its points, normals and faces. Created with the chunk; keeps its initial values if the file has no
    /// GEOM block for it. Null only if a host writes null.
    std::shared_ptr<ZLMIM::Geometry> Geometry;
    /// Version of the CHNK block, as stored.
    std::int32_t Version = 0;
    /// The chunk's number in the file, as stored. It isn't unique, and isn't its number in the list.
    std::int32_t Id = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;
};

} // namespace ZLMIM
