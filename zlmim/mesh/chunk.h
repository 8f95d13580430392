#ifndef ZLMIM_MESH_CHUNK_H
#define ZLMIM_MESH_CHUNK_H

#include "zlmim/mesh/geometry.h"
#include "zlmim/mesh/material.h"
#include "zlmim/model/facade.h"

#include <cstdint>
#include <memory>

namespace ZLMIM
{

/// The material and geometry for part of the mesh. Both exist from the start, whether or not the file has
/// them.
class Chunk
{
public:
    std::shared_ptr<ZLMIM::Material> Material = std::make_shared<ZLMIM::Material>();
    std::shared_ptr<ZLMIM::Geometry> Geometry = std::make_shared<ZLMIM::Geometry>();
    /// Version of the CHNK block.
    std::int32_t Version = 0;
    /// The chunk's number in the file, as stored.
    std::int32_t Id = 0;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;
};

} // namespace ZLMIM

#endif
