#ifndef ZLMIM_MESH_GEOMETRY_H
#define ZLMIM_MESH_GEOMETRY_H

#include "zlmim/mesh/element_store.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/facade.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ZLMIM
{

class Bone;

/// All the points, normals and face definitions of one chunk. A passive store: no value is checked against
/// another.
///
/// It has three element stores, numbered from 0: vertices, vertex normals, indices. `MaxVertices`,
/// `MaxVertNormal` and `MaxIndex` are their counts, not their highest indices. Setting a count greater than 0
/// replaces the array by one of that many zeroed elements; a count of 0 or less leaves the array alone.
/// Reading an element asks the count, and answers for a bad index; writing one asks the array, and raises.
class Geometry
{
public:
    Geometry() = default;
    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;
    ~Geometry() = default;

    /// Version of the GEOM block; 0 if the chunk has none.
    std::int32_t Version = 0;
    /// As stored; without a meaning here.
    float Area = 0;
    /// Normals of the faces, numbered from 1, as many as the file says; none only if a host writes none.
    std::shared_ptr<Collection<Vector>> FaceNormals = std::make_shared<Collection<Vector>>();
    /// Number of primitives, as stored: not derived from the indices.
    std::int32_t PrimitiveCount = 0;
    /// As stored; without a meaning here.
    std::int32_t MaxInfl = 0;
    /// What the indices describe; any number.
    PrimFlag PrimitiveType = PrimFlag::NONE;
    /// Name of the bone that the chunk hangs from, as stored; empty for none.
    std::u16string Bone;
    /// The bone of that name in the mesh's skeleton, the same object as in its tree; none if there is none.
    std::shared_ptr<ZLMIM::Bone> BoneObject;

    /// Number of vertices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxVertices() const noexcept { return mVertices.Count(); }
    /// @throws std::bad_alloc
    void SetMaxVertices(std::int32_t count) { mVertices.SetCount(count); }

    /// Number of vertex normals as last set: a count, may be negative. After a load equal to `MaxVertices`:
    /// the normal of a vertex has the vertex's index.
    [[nodiscard]] std::int32_t MaxVertNormal() const noexcept { return mNormals.Count(); }
    /// @throws std::bad_alloc
    void SetMaxVertNormal(std::int32_t count) { mNormals.SetCount(count); }

    /// @throws BoundsError outside the array, whatever the count says.
    void SetVertex(std::int32_t index, const Vertex& v) { mVertices.Set(index, v); }
    /// Copies vertex `index` out. False, `v` untouched, outside the count.
    [[nodiscard]] bool GetVertex(std::int32_t index, Vertex& v) const;
    /// @throws BoundsError outside the array, whatever the count says.
    void SetVertexNormal(std::int32_t index, const Vector& v) { mNormals.Set(index, v); }
    /// Copies vertex normal `index` out. False, `v` untouched, outside the count.
    [[nodiscard]] bool GetVertexNormal(std::int32_t index, Vector& v) const;

    /// Number of indices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxIndex() const noexcept { return mIndices.Count(); }
    /// @throws std::bad_alloc
    void SetMaxIndex(std::int32_t count) { mIndices.SetCount(count); }
    /// @throws BoundsError outside the array, whatever the count says.
    void SetIndex(std::int32_t index, std::int32_t i) { mIndices.Set(index, i); }
    /// Index `index`: the number of a vertex from 0, or whatever the file has (stored as 16 bits, signed). -1
    /// outside the count.
    [[nodiscard]] std::int32_t GetIndex(std::int32_t index) const;

    /// The three stores as they lie in memory, each with its count's elements, until that count is set again.
    [[nodiscard]] std::span<const Vertex> Vertices() const noexcept { return mVertices.Elements(); }
    [[nodiscard]] std::span<const Vector> VertexNormals() const noexcept { return mNormals.Elements(); }
    [[nodiscard]] std::span<const std::int32_t> Indices() const noexcept { return mIndices.Elements(); }

    /// What a host of the component holds.
    ZLMIM::Facade Facade;

private:
    friend class Mesh;

    ElementStore<std::int32_t> mIndices;
    ElementStore<Vector> mNormals;
    ElementStore<Vertex> mVertices;
};

} // namespace ZLMIM

#endif
