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
        FileName, mCursor,
        [&] { return mCursor.LoadFile(FileName, paths, budget, FileSize) && FileSize > 0; },
        [this] { return Parse(); });
}

bool Mesh::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    Begin(name);
    LoadBudget budget;
    return Container::Load(
        FileName, mCursor, [&] { return mCursor.LoadBytes(bytes, budget, FileSize) && FileSize > 0; },
        [this] { return Parse(); });
}

void Mesh::Begin(std::u16string_view name)
{
    Polygons = 0;
    VertexCount = 0;
    TextureCount = 0;
    FileName = std::u16string(name); // `name` may refer to this property
}

bool Mesh::Parse()
{
    if (!ReadHeader() || !ReadChunks())
        return false;
    SkipInfluences();
    ReadAttachments();
    ReadSkeleton();
    BindBones();
    return true;
}

bool Mesh::ReadHeader()
{
    if (!Container::FindInfo(mCursor, "IDXM", ErrorMessage, u"Not a ZLM IM file - no JIRF",
                             u"Not a ZLM IM file - no IDXM"))
        return false;
    ReadInfo();
    return true;
}

void Mesh::ReadInfo()
{
    const auto info = Block::EnterAfterTag(mCursor);
    Version = mCursor.GetLong();
    mCursor.Pos += kInfoGap;
    ChunkCount = mCursor.GetLong();
    info.Leave(mCursor);
}

bool Mesh::ReadChunks()
{
    Chunks = std::make_shared<Collection<Chunk>>();
    const std::int32_t count = ChunkCount;
    Chunks->Reserve(static_cast<std::size_t>(std::clamp(count, 0, kUsualChunks)));
    for (std::int32_t i = 0; i < count; ++i)
    {
        if (!ReadChunk())
            return false;
    }
    return true;
}

bool Mesh::ReadChunk()
{
    const auto block = Block::Enter(mCursor, "CHNK");
    if (!block)
    {
        ErrorMessage = u"Not a ZLM IM file - CHNK missing";
        return false;
    }

    mCursor.PrefaultObjects();
    mCursor.Budget().ChargeObjects<Chunk, Material, Geometry, Collection<Texture>, Collection<Vector>>();
    const auto chunk = std::make_shared<Chunk>();
    chunk->Version = mCursor.GetLong();
    chunk->Id = mCursor.GetLong();
    ReadMaterial(*chunk->Material);
    ReadGeometry(*chunk->Geometry);
    Chunks->Add(chunk);

    block->Leave(mCursor);
    return true;
}

} // namespace ZLMIM
