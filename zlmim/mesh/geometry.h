#pragma once

#include "zlmim/mesh/element_store.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

class Bone;

/// All the points, normals and face definitions of one chunk. It only stores values, and doesn't check one
/// against another. A load fills it from the chunk's GEOM block. Without that block all numbers stay 0.
///
/// It has three arrays, indexed from 0: vertices, vertex normals, indices. `MaxVertices`, `MaxVertNormal` and
/// `MaxIndex` are their counts, not their highest indices. Setting a count greater than 0 replaces the array
/// by one of that many zeroed elements; setting a count of 0 or less keeps the array. The Get functions check
/// the index against the count and return false or -1 for a bad index. The Set functions check it against the
/// array and throw.
/// \ingroup meshes
class Geometry
{
public:
    Geometry() = default;
    /// With this list as its `FaceNormals`.
    explicit Geometry(std::shared_ptr<Collection<Vector>> faceNormals) : FaceNormals(std::move(faceNormals))
    {
    }
    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;
    ~Geometry() = default;

    /// Version of the GEOM block, as stored. Blocks of versions above 200 have one more field, which isn't
    /// kept.
    std::int32_t Version = 0;
    /// As stored. The library gives it no meaning.
    float Area = 0;
    /// Face normals, numbered from 1. Their number comes from the file, not from the primitives. Null only if
    /// a host writes null.
    std::shared_ptr<Collection<Vector>> FaceNormals = std::make_shared<Collection<Vector>>();
    /// Number of primitives, as stored: not derived from the indices.
    std::int32_t PrimitiveCount = 0;
    /// As stored. The library gives it no meaning.
    std::int32_t MaxInfl = 0;
    /// The kind of primitive that the indices describe, as stored: any number.
    PrimFlag PrimitiveType = PrimFlag::NONE;
    /// Name of the bone that the chunk hangs from, as stored, including letter case. Empty if the chunk has
    /// no bone.
    std::u16string Bone;
    /// The bone of exactly that name in the mesh's skeleton; of several, the first in tree order, parents
    /// before children. It is the same object as in the tree. Null if there is no such bone or the name is
    /// empty. Also null after a failed load, since the last step of `Mesh::Load` sets it.
    std::shared_ptr<ZLMIM::Bone> BoneObject;

    /// Number of vertices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxVertices() const noexcept { return mVertices.Count(); }
    /// Sets the count, and creates a new array if it is greater than 0.
    /// @throws std::bad_alloc; count and array are then unchanged.
    void SetMaxVertices(std::int32_t count) { mVertices.SetCount(count); }

    /// Number of vertex normals as last set: a count, may be negative. After a load equal to `MaxVertices`:
    /// the normal of a vertex has the vertex's index.
    [[nodiscard]] std::int32_t MaxVertNormal() const noexcept { return mNormals.Count(); }
    /// Sets the count, and creates a new array if it is greater than 0.
    /// @throws std::bad_alloc; count and array are then unchanged.
    void SetMaxVertNormal(std::int32_t count) { mNormals.SetCount(count); }

    /// Copies `v` into vertex `index`.
    /// @throws BoundsError outside the array, regardless of the count.
    void SetVertex(std::int32_t index, const Vertex& v) { mVertices.Set(index, v); }
    /// Copies vertex `index` to `v`. Returns false and leaves `v` unchanged outside the count.
    [[nodiscard]] bool GetVertex(std::int32_t index, Vertex& v) const { return mVertices.Get(index, v); }
    /// Copies `v` into vertex normal `index`.
    /// @throws BoundsError outside the array, regardless of the count.
    void SetVertexNormal(std::int32_t index, const Vector& v) { mNormals.Set(index, v); }
    /// Copies vertex normal `index` to `v`. Returns false and leaves `v` unchanged outside the count.
    [[nodiscard]] bool GetVertexNormal(std::int32_t index, Vector& v) const { return mNormals.Get(index, v); }

    /// Number of indices as last set: a count, may be negative.
    [[nodiscard]] std::int32_t MaxIndex() const noexcept { return mIndices.Count(); }
    /// Sets the count, and creates a new array if it is greater than 0.
    /// @throws std::bad_alloc; count and array are then unchanged.
    void SetMaxIndex(std::int32_t count) { mIndices.SetCount(count); }
    /// Writes `i`, which may be any number, to index `index`.
    /// @throws BoundsError outside the array, regardless of the count.
    void SetIndex(std::int32_t index, std::int32_t i) { mIndices.Set(index, i); }
    /// Index `index`: the number of a vertex from 0, or any other number that the file has. Files store it as
    /// a signed 16-bit number, so vertices from 32768 on are -32768 and above. Returns -1 outside the count.
    [[nodiscard]] std::int32_t GetIndex(std::int32_t index) const
    {
        std::int32_t element = -1;
        return mIndices.Get(index, element) ? element : -1;
    }

    /// All vertices in memory order, valid until `SetMaxVertices` or the end of the object. Empty if the
    /// count is 0 or less.
    [[nodiscard]] std::span<const Vertex> Vertices() const noexcept { return mVertices.Elements(); }
    /// All vertex normals, valid until `SetMaxVertNormal` or the end of the object.
    [[nodiscard]] std::span<const Vector> VertexNormals() const noexcept { return mNormals.Elements(); }
    /// All indices, valid until `SetMaxIndex` or the end of the object.
    [[nodiscard]] std::span<const std::int32_t> Indices() const noexcept { return mIndices.Elements(); }

    /// A reference to the memory of `Vertices`, for a host whose view may outlive the array: it is freed with
    /// the last reference, not with the count or the object. What is written through one is seen in the
    /// object, until the count is set again. Null if there never was an array.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<Vertex> ShareVertices() { return mVertices.Share(); }

    /// The same for `VertexNormals`.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<Vector> ShareVertexNormals() { return mNormals.Share(); }

    /// The same for `Indices`.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<std::int32_t> ShareIndices() { return mIndices.Share(); }

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    friend class Mesh;

    ElementStore<std::int32_t> mIndices;
    ElementStore<Vector> mNormals;
    ElementStore<Vertex> mVertices;
};

} // namespace ZLMIM
