#ifndef ZLMIM_MESH_GEOMETRY_H
#define ZLMIM_MESH_GEOMETRY_H

#include "zlmim/mesh/element_store.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ZLMIM
{

class Bone;

/// All the points, normals and face definitions of one chunk. A passive store: no value is checked against
/// another. A load fills it once, from the chunk's GEOM block; a chunk without one keeps it as a new one is,
/// with all numbers 0.
///
/// It has three element stores, numbered from 0: vertices, vertex normals, indices. `MaxVertices`,
/// `MaxVertNormal` and `MaxIndex` are their counts, not their highest indices. Setting a count greater than 0
/// replaces the array by one of that many zeroed elements; a count of 0 or less leaves the array alone.
/// Reading an element asks the count, and answers for a bad index; writing one asks the array, and raises.
/// \ingroup meshes
class Geometry
{
public:
    Geometry() = default;
    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;
    ~Geometry() = default;

    /// Version of the GEOM block, as stored. Blocks above 200 have one field more, which isn't kept.
    std::int32_t Version = 0;
    /// As stored; without a meaning here.
    float Area = 0;
    /// Normals of the faces, numbered from 1, as many as the file says: not derived from the primitives. None
    /// only if a host writes none.
    std::shared_ptr<Collection<Vector>> FaceNormals = std::make_shared<Collection<Vector>>();
    /// Number of primitives, as stored: not derived from the indices.
    std::int32_t PrimitiveCount = 0;
    /// As stored; without a meaning here.
    std::int32_t MaxInfl = 0;
    /// What the indices describe, as stored: any number.
    PrimFlag PrimitiveType = PrimFlag::NONE;
    /// Name of the bone that the chunk hangs from, as stored, letter case included; empty for none.
    std::u16string Bone;
    /// The bone of that name in the mesh's skeleton, the same object as in its tree, and the first of several
    /// in its order, parents before children. None where none has that very name, or the name is empty.
    /// Written by the last step of `Mesh::Load` alone, so none after a load that failed.
    std::shared_ptr<ZLMIM::Bone> BoneObject;

    /// Number of vertices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxVertices() const noexcept { return mVertices.Count(); }
    /// Writes the count, and makes a new array if it is greater than 0.
    /// @throws std::bad_alloc; the count stands, without an array.
    void SetMaxVertices(std::int32_t count) { mVertices.SetCount(count); }

    /// Number of vertex normals as last set: a count, may be negative. After a load equal to `MaxVertices`:
    /// the normal of a vertex has the vertex's index.
    [[nodiscard]] std::int32_t MaxVertNormal() const noexcept { return mNormals.Count(); }
    /// Writes the count, and makes a new array if it is greater than 0.
    /// @throws std::bad_alloc; the count stands, without an array.
    void SetMaxVertNormal(std::int32_t count) { mNormals.SetCount(count); }

    /// Copies `v` into vertex `index`.
    /// @throws BoundsError outside the array, whatever the count says.
    void SetVertex(std::int32_t index, const Vertex& v) { mVertices.Set(index, v); }
    /// Copies vertex `index` out. False, `v` untouched, outside the count.
    /// @throws BoundsError within the count, where its array found no memory.
    [[nodiscard]] bool GetVertex(std::int32_t index, Vertex& v) const;
    /// Copies `v` into vertex normal `index`.
    /// @throws BoundsError outside the array, whatever the count says.
    void SetVertexNormal(std::int32_t index, const Vector& v) { mNormals.Set(index, v); }
    /// Copies vertex normal `index` out. False, `v` untouched, outside the count.
    /// @throws BoundsError within the count, where its array found no memory.
    [[nodiscard]] bool GetVertexNormal(std::int32_t index, Vector& v) const;

    /// Number of indices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxIndex() const noexcept { return mIndices.Count(); }
    /// Writes the count, and makes a new array if it is greater than 0.
    /// @throws std::bad_alloc; the count stands, without an array.
    void SetMaxIndex(std::int32_t count) { mIndices.SetCount(count); }
    /// Writes `i` to index `index`: any number.
    /// @throws BoundsError outside the array, whatever the count says.
    void SetIndex(std::int32_t index, std::int32_t i) { mIndices.Set(index, i); }
    /// Index `index`: the number of a vertex from 0, or whatever the file has. A file has 16 bits for it,
    /// signed: vertices from 32768 on come out as -32768 and above. -1 also outside the count.
    /// @throws BoundsError within the count, where its array found no memory.
    [[nodiscard]] std::int32_t GetIndex(std::int32_t index) const;

    /// All vertices as they lie in memory, until `SetMaxVertices` or the end of the object; empty where the
    /// count is 0 or less.
    [[nodiscard]] std::span<const Vertex> Vertices() const noexcept { return mVertices.Elements(); }
    /// All vertex normals, until `SetMaxVertNormal`.
    [[nodiscard]] std::span<const Vector> VertexNormals() const noexcept { return mNormals.Elements(); }
    /// All indices, until `SetMaxIndex`.
    [[nodiscard]] std::span<const std::int32_t> Indices() const noexcept { return mIndices.Elements(); }

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    friend class Mesh;

    ElementStore<std::int32_t> mIndices;
    ElementStore<Vector> mNormals;
    ElementStore<Vertex> mVertices;
};

} // namespace ZLMIM

#endif
