#pragma once

#include "geometry_export.h"
#include "gltf.h"

#include "zlmim/mesh/material.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <map>
#include <optional>

namespace ZLMIM::Export
{

/// Adds materials and images to a document.
class MaterialExport
{
public:
    MaterialExport(PathResolver& names, Document& document) : mNames(names), mDocument(document) {}

    /// `mesh` is the one with the material's chunk, beside which the textures' files are.
    Index Add(const ZLMIM::Material& material, const Mesh& mesh, const Report& report);

private:
    [[nodiscard]] std::optional<Index> FindImage(const Texture& texture, const Mesh& mesh,
                                                 const Report& report);

    PathResolver& mNames;
    Document& mDocument;
    /// The image of each file that has been read; `std::nullopt` for one that can't be.
    std::map<NativePath, std::optional<Index>> mImages;
};

} // namespace ZLMIM::Export
