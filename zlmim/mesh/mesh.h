#ifndef ZLMIM_MESH_MESH_H
#define ZLMIM_MESH_MESH_H

#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"
#include "zlmim/mesh/chunk.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/facade.h"
#include "zlmim/reader/bone_tree.h"
#include "zlmim/reader/file_cursor.h"
#include "zlmim/reader/file_names.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM
{

/// The object representing one mesh file (`.im`): its chunks of material and geometry, its attachment points
/// and its skeleton. A host may write every property; `Load` writes them from the file.
class Mesh
{
public:
    Mesh() = default;
    Mesh(const Mesh&) = delete;
    Mesh& operator=(const Mesh&) = delete;
    ~Mesh() = default;

    /// Text if `Load` fails, for those failures that have one. Never cleared, so it means something only
    /// after an answer of false.
    std::u16string ErrorMessage;
    /// Number of chunks that the file declares.
    std::int32_t ChunkCount = 0;
    /// Version in the info block.
    std::int32_t Version = 0;
    /// Length of the file in bytes.
    std::int32_t FileSize = 0;
    /// All attachment points in file order; none before a load has come so far. Replaced by each load that
    /// does.
    std::shared_ptr<Collection<Attachment>> Attachments;
    /// The chunks that make up the mesh, in file order; none before a load has come so far. Replaced by each
    /// load that does.
    std::shared_ptr<Collection<Chunk>> Chunks;
    /// Root of the skeleton; none if no file had one. Stays if a later file has none.
    std::shared_ptr<Bone> RootBone;
    /// Version of the ATCH block. Stays if a later file has none.
    std::int32_t AttVersion = 0;
    /// Number of triangles in the whole mesh: the sum of the chunks' primitive counts.
    std::int32_t Polygons = 0;
    /// The name given to the last `Load`, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder, whose letter case
    /// doesn't matter where the exact name isn't found. True when the whole file was read. False for a file
    /// that is missing, unreadable or empty, and, with an `ErrorMessage`, for one that isn't a mesh.
    ///
    /// After any failure the properties stay as far as they were filled. Before it starts, `Load` sets
    /// `Polygons`, `VertexCount` and `TextureCount` to 0; nothing else is cleared.
    /// @throws BoundsError where the file ends too early, or asks for more than a file of its size may.
    /// @throws OverflowError where a size or a count leads out of the 32-bit range.
    /// @throws std::bad_alloc
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files: `names` remembers the folders that it has listed.
    [[nodiscard]] bool Load(std::u16string_view name, FileNames& names);

    /// The same for the bytes of a file, which are copied; `name` only goes to `FileName`.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// Number of BONE blocks read by all loads of this object together.
    std::int32_t BoneCount = 0;
    /// Sum of the chunks' vertex counts.
    std::int32_t VertexCount = 0;
    /// Sum of the materials' texture counts: records, not distinct names.
    std::int32_t TextureCount = 0;

    /// What a host of the component holds.
    ZLMIM::Facade Facade;

private:
    void Begin(std::u16string_view name);
    bool Finish(bool isLoaded);
    bool ReadHeader();
    void ReadInfo();
    bool ReadChunks();
    bool ReadChunk();
    void ReadMaterial(Material& material);
    std::shared_ptr<Texture> ReadTexture();
    void ReadGeometry(Geometry& geometry);
    void SkipInfluences();
    void ReadAttachments();
    void ReadSkeleton();
    void ReadBone(BoneTree<Bone>& tree, const std::shared_ptr<Bone>& bone, std::int32_t level);
    void BindBones();

    FileCursor mCursor;
};

} // namespace ZLMIM

#endif
