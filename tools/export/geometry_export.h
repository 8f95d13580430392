#pragma once

#include "gltf.h"

#include "zlmim/mesh/geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Export
{

/// Takes the name of a repair.
using Report = std::function<void(const std::string&)>;

/// Appends a view to a document, and returns its number.
template <class T>
Index AddView(Document& document, std::vector<T> elements, std::int32_t target = 0, std::size_t stride = 0)
{
    auto owner = std::make_shared<const std::vector<T>>(std::move(elements));
    document.Views.push_back({std::as_bytes(std::span(*owner)), owner, stride, target});
    return document.Views.size() - 1;
}

/// Appends an accessor to a document, and returns its number.
inline Index AddAccessor(Document& document, Accessor accessor)
{
    document.Accessors.push_back(std::move(accessor));
    return document.Accessors.size() - 1;
}

/// The primitive of a chunk's geometry, without its material, with accessors and views in the document. They
/// refer to the geometry's own arrays where those need no repair, so it mustn't be changed before the
/// document is written. `std::nullopt` if it can't be shown.
[[nodiscard]] std::optional<Primitive> AddGeometry(const std::shared_ptr<const Geometry>& geometry,
                                                   bool isVFlipped, Document& document, const Report& report);

/// Binds all vertices of a primitive to a joint of its mesh's skin.
void AddJoint(Primitive& primitive, std::size_t joint, Document& document);

} // namespace ZLMIM::Export
