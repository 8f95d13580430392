#include "zlmim/mesh/mesh.h"

#include "zlmim/reader/block.h"

namespace ZLMIM
{
namespace
{

constexpr std::int32_t kSignaturePos = 0;
constexpr std::int32_t kFileKindPos = 8;
constexpr std::int32_t kInfoSizePos = 16;
/// Bytes of the info block between `Version` and `ChunkCount`.
constexpr std::int32_t kInfoGap = 28;
/// Bytes of a chunk without material and geometry.
constexpr std::int32_t kSmallestChunk = 16;

} // namespace

bool Mesh::Load(std::u16string_view name)
{
    PathResolver paths;
    return Load(name, paths);
}

bool Mesh::Load(std::u16string_view name, PathResolver& paths)
{
    Begin(name);
    return Finish(mCursor.LoadFile(FileName, paths, FileSize, EmptyFile::Refused));
}

bool Mesh::LoadBytes(std::span<const std::byte> bytes, std::u16string_view name)
{
    Begin(name);
    return Finish(mCursor.LoadBytes(bytes, FileSize, EmptyFile::Refused));
}

void Mesh::Begin(std::u16string_view name)
{
    Polygons = 0;
    VertexCount = 0;
    TextureCount = 0;
    FileName = std::u16string(name); // the name may be this very property
}

bool Mesh::Finish(bool isLoaded)
{
    if (!isLoaded)
    {
        mCursor.Release();
        return false;
    }
    if (!ReadHeader() || !ReadChunks())
        return false;
    SkipInfluences();
    ReadAttachments();
    ReadSkeleton();
    BindBones();
    mCursor.Release();
    return true;
}

bool Mesh::ReadHeader()
{
    mCursor.Pos = kSignaturePos;
    if (!mCursor.TakesTag("JIRF"))
    {
        ErrorMessage = u"Not a ZLM IM file - no JIRF";
        return false;
    }
    mCursor.Pos = kFileKindPos;
    if (!mCursor.TakesTag("IDXM"))
    {
        ErrorMessage = u"Not a ZLM IM file - no IDXM";
        return false;
    }
    ReadInfo();
    return true;
}

void Mesh::ReadInfo()
{
    mCursor.Pos = kInfoSizePos;
    const auto info = Block::EnterBehindTag(mCursor);
    Version = mCursor.GetLong();
    mCursor.Pos += kInfoGap;
    ChunkCount = mCursor.GetLong();
    info.Leave(mCursor);
}

bool Mesh::ReadChunks()
{
    Chunks = std::make_shared<Collection<Chunk>>();
    const std::int32_t count = ChunkCount;
    Chunks->Reserve(mCursor.MostThatFit(count, kSmallestChunk));
    for (std::int32_t i = 0; i < count; ++i)
    {
        if (!ReadChunk())
            return false;
    }
    return true;
}

bool Mesh::ReadChunk()
{
    // Unlike every other reader, this one doesn't step back from a foreign tag: the load ends there.
    if (!mCursor.TakesTag("CHNK"))
    {
        ErrorMessage = u"Not a ZLM IM file - CHNK missing";
        return false;
    }
    const auto block = Block::EnterBehindTag(mCursor);
    const auto chunk = std::make_shared<Chunk>();
    chunk->Version = mCursor.GetLong();
    chunk->Id = mCursor.GetLong();
    ReadMaterial(*chunk->Material);
    ReadGeometry(*chunk->Geometry);
    Chunks->Add(chunk);
    block.Leave(mCursor);
    return true;
}

} // namespace ZLMIM
