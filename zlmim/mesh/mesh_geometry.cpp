#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/load_budget.h"

#include <cstring>
#include <utility>

namespace ZLMIM
{
namespace
{

/// GEOM blocks above this version have one field more.
constexpr std::int32_t kLastGeometryWithoutExtraField = 200;

void Copy(UnalignedArray<std::int16_t> stored, RecordArray<std::int32_t>& indices)
{
    indices = RecordArray<std::int32_t>::Uninitialised(stored.count);
    for (std::size_t i = 0; i < stored.count; ++i)
    {
        std::int16_t index = 0;
        std::memcpy(&index, stored.bytes + i * sizeof(index), sizeof(index));
        indices[i] = index;
    }
}

template <class Record>
void Copy(UnalignedArray<Record> stored, RecordArray<Record>& records)
{
    records.AppendBytes(stored.bytes, stored.count);
}

/// Reads `count` elements. Checks the size of all before it allocates memory.
/// @throws OverflowError for INT32_MIN, whose last index overflows.
template <class Stored, class Element>
void ReadArray(FileCursor& cursor, ElementStore<Element>& store, std::int32_t count)
{
    static_cast<void>(CheckedSubtract(count, 1));
    const auto stored = cursor.GetArray<Stored>(count);
    cursor.Budget().ChargeMemory(static_cast<std::int64_t>(stored.count * sizeof(Element)));
    RecordArray<Element> elements;
    Copy(stored, elements);
    store.Adopt(count, std::move(elements));
}

} // namespace

void Mesh::ReadGeometry(FileCursor& cursor, Geometry& geometry)
{
    const auto block = Block::Enter(cursor, "GEOM");
    if (!block)
        return;

    geometry.Version = cursor.GetLong();
    geometry.PrimitiveType = static_cast<PrimFlag>(cursor.GetLong());
    if (geometry.Version > kLastGeometryWithoutExtraField)
        static_cast<void>(cursor.GetLong()); // the extra field isn't used
    cursor.GetSingle(geometry.Area);
    const std::int32_t vertexCount = cursor.GetLong();
    VertexCount = CheckedAdd(VertexCount, vertexCount);
    geometry.PrimitiveCount = cursor.GetLong();
    Polygons = CheckedAdd(Polygons, geometry.PrimitiveCount);
    const std::int32_t indexCount = cursor.GetLong();
    const std::int32_t faceNormalCount = cursor.GetLong();
    geometry.MaxInfl = cursor.GetLong();
    geometry.Bone = cursor.GetString();

    ReadArray<Vertex>(cursor, geometry.mVertices, vertexCount);
    ReadArray<std::int16_t>(cursor, geometry.mIndices, indexCount);
    ReadArray<Vector>(cursor, geometry.mNormals, vertexCount);
    const auto faceNormals = cursor.GetArray<Vector>(faceNormalCount);
    cursor.Budget().ChargeMemory(static_cast<std::int64_t>(faceNormals.count * sizeof(Vector)));
    geometry.FaceNormals->AppendBytes(faceNormals.bytes, faceNormals.count);

    block->Leave(cursor);
}

} // namespace ZLMIM
