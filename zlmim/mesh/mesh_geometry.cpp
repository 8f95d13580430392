#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"

#include <cstring>

namespace ZLMIM
{
namespace
{

/// GEOM blocks above this version have one field more.
constexpr std::int32_t kLastGeometryWithoutExtraField = 200;

/// @throws OverflowError for the one count that has no highest index, which is formed before any element is
/// read.
void TestHighestIndex(std::int32_t count) { static_cast<void>(CheckedSubtract(count, 1)); }

template <class Record>
RecordArray<Record> Copied(Run<Record> run)
{
    RecordArray<Record> records;
    records.AppendBytes(run.bytes, run.count);
    return records;
}

RecordArray<std::int32_t> Widened(Run<std::int16_t> run)
{
    auto indices = RecordArray<std::int32_t>::Uninitialised(run.count);
    for (std::size_t i = 0; i < run.count; ++i)
    {
        std::int16_t index = 0;
        std::memcpy(&index, run.bytes + i * sizeof(index), sizeof(index));
        indices[i] = index;
    }
    return indices;
}

} // namespace

void Mesh::ReadGeometry(Geometry& geometry)
{
    const auto block = Block::Enter(mCursor, "GEOM");
    if (!block)
        return;

    geometry.Version = mCursor.GetLong();
    geometry.PrimitiveType = static_cast<PrimFlag>(mCursor.GetLong());
    if (geometry.Version > kLastGeometryWithoutExtraField)
        static_cast<void>(mCursor.GetLong()); // the extra field has no use
    mCursor.GetSingle(geometry.Area);
    const std::int32_t vertexCount = mCursor.GetLong();
    VertexCount = CheckedAdd(VertexCount, vertexCount);
    geometry.PrimitiveCount = mCursor.GetLong();
    Polygons = CheckedAdd(Polygons, geometry.PrimitiveCount);
    const std::int32_t indexCount = mCursor.GetLong();
    const std::int32_t faceNormalCount = mCursor.GetLong();
    geometry.MaxInfl = mCursor.GetLong();
    geometry.Bone = mCursor.GetString();

    // Each run is tested as a whole before memory is asked for.
    TestHighestIndex(vertexCount);
    geometry.mVertices.Adopt(vertexCount, Copied(mCursor.GetRun<Vertex>(vertexCount)));
    TestHighestIndex(indexCount);
    geometry.mIndices.Adopt(indexCount, Widened(mCursor.GetRun<std::int16_t>(indexCount)));
    geometry.mNormals.Adopt(vertexCount, Copied(mCursor.GetRun<Vector>(vertexCount)));
    const auto faceNormals = mCursor.GetRun<Vector>(faceNormalCount);
    geometry.FaceNormals->AppendBytes(faceNormals.bytes, faceNormals.count);

    block->Leave(mCursor);
}

} // namespace ZLMIM
