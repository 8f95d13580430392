#include "zlmim/mesh/mesh.h"

#include "zlmim/reader/block.h"
#include "zlmim/reader/container.h"

#include <algorithm>

namespace ZLMIM
{
namespace
{

/// Bytes of the info block between `Version` and `ChunkCount`.
constexpr std::int32_t kInfoGap = 28;
/// Few meshes have more chunks.
constexpr std::int32_t kUsualChunks = 64;

} // namespace

bool Mesh::Load(std::u16string_view name)
{
    PathResolver paths;
    LoadBudget budget;
    return Load(name, paths, budget);
}

bool Mesh::Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget)
{
    Begin(name);
    return Container::Load(
        FileName, budget,
        [&](FileCursor& cursor) { return cursor.LoadFile(FileName, paths, FileSize) && FileSize > 0; },
        [this](FileCursor& cursor) { return Parse(cursor); });
}

bool Mesh::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    Begin(name);
    LoadBudget budget;
    return Container::Load(
        FileName, budget,
        [&](FileCursor& cursor) { return cursor.LoadBytes(bytes, FileSize) && FileSize > 0; },
        [this](FileCursor& cursor) { return Parse(cursor); });
}

void Mesh::Begin(std::u16string_view name)
{
    Polygons = 0;
    VertexCount = 0;
    TextureCount = 0;
    FileName = std::u16string(name); // `name` may refer to this property
}

bool Mesh::Parse(FileCursor& cursor)
{
    if (!ReadHeader(cursor) || !ReadChunks(cursor))
        return false;
    SkipInfluences(cursor);
    ReadAttachments(cursor);
    ReadSkeleton(cursor);
    BindBones();
    return true;
}

bool Mesh::ReadHeader(FileCursor& cursor)
{
    if (!Container::FindInfo(cursor, "IDXM", ErrorMessage, u"Not a ZLM IM file - no JIRF",
                             u"Not a ZLM IM file - no IDXM"))
        return false;
    ReadInfo(cursor);
    return true;
}

void Mesh::ReadInfo(FileCursor& cursor)
{
    const auto info = Block::EnterAfterTag(cursor);
    Version = cursor.GetLong();
    cursor.Pos += kInfoGap;
    ChunkCount = cursor.GetLong();
    info.Leave(cursor);
}

bool Mesh::ReadChunks(FileCursor& cursor)
{
    Chunks = std::make_shared<Collection<Chunk>>();
    const std::int32_t count = ChunkCount;
    Chunks->Reserve(static_cast<std::size_t>(std::clamp(count, 0, kUsualChunks)));
    for (std::int32_t i = 0; i < count; ++i)
    {
        if (!ReadChunk(cursor))
            return false;
    }
    return true;
}

bool Mesh::ReadChunk(FileCursor& cursor)
{
    const auto block = Block::Enter(cursor, "CHNK");
    if (!block)
    {
        ErrorMessage = u"Not a ZLM IM file - CHNK missing";
        return false;
    }

    cursor.PrefaultObjects();
    cursor.Budget().ChargeObjects<Chunk, Material, Geometry, Collection<Texture>, Collection<Vector>>();
    const auto chunk = std::make_shared<Chunk>();
    chunk->Version = cursor.GetLong();
    chunk->Id = cursor.GetLong();
    ReadMaterial(cursor, *chunk->Material);
    ReadGeometry(cursor, *chunk->Geometry);
    Chunks->Add(chunk);

    block->Leave(cursor);
    return true;
}

} // namespace ZLMIM
