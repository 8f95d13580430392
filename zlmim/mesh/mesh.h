#ifndef ZLMIM_MESH_MESH_H
#define ZLMIM_MESH_MESH_H

#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"
#include "zlmim/mesh/chunk.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/file_cursor.h"
#include "zlmim/reader/path_resolver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM
{

class BoneLimits;
class BoneTree;
class LoadBudget;

/// The object representing one mesh file (`.im`): its chunks of material and geometry, its attachment points
/// and its skeleton. A new mesh has no lists and no skeleton; `Load` makes them.
/// \ingroup meshes
class Mesh
{
public:
    Mesh() = default;
    Mesh(const Mesh&) = delete;
    Mesh& operator=(const Mesh&) = delete;
    ~Mesh() = default;

    /// Text if `Load` fails, for those failures that have one:
    ///
    /// - "Not a ZLM IM file - no JIRF", "Not a ZLM IM file - no IDXM": its first bytes aren't a mesh's.
    /// - "Not a ZLM IM file - CHNK missing": another block stands where one of its chunks should.
    ///
    /// No load clears it: after an answer of false for another reason, an older text still stands.
    std::u16string ErrorMessage;
    /// Number of chunks that the info block declares, may be negative. As many are in `Chunks` after an
    /// answer of true, none for a negative number.
    std::int32_t ChunkCount = 0;
    /// Version in the info block, as stored.
    std::int32_t Version = 0;
    /// Length of the file in bytes. Stays where the file isn't found, may not be read, or is too long.
    std::int32_t FileSize = 0;
    /// All attachment points in file order. Each load that gets past the chunks makes a new list, an empty
    /// one where the file has no ATCH block; none before the first one did.
    std::shared_ptr<Collection<Attachment>> Attachments;
    /// The chunks that make up the mesh, in file order. Each load that gets past the info block makes a new
    /// list; none before the first one did. A chunk whose MATL or GEOM block raised isn't in it.
    std::shared_ptr<Collection<Chunk>> Chunks;
    /// Root of the skeleton. Each load that finds a SKEL block makes a new tree, which stays as far as it was
    /// read when that raises. Where a later file has no such block, the former tree stays, and the new chunks
    /// are bound to it. None if no file had one.
    std::shared_ptr<Bone> RootBone;
    /// Version of the ATCH block, as stored. Stays if a later file has none.
    std::int32_t AttVersion = 0;
    /// Number of triangles in the whole mesh: the sum of the chunks' primitive counts as stored, whatever
    /// their type. Each load begins it at 0, and adds a chunk's count before it reads the chunk's arrays.
    std::int32_t Polygons = 0;
    /// The name given to the last load, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder, whose letter case
    /// doesn't matter where the exact name isn't found. True when the whole file was read. False for a file
    /// that is missing, unreadable, empty, or longer than `kMaxFileSize` or the memory there is, and, with an
    /// `ErrorMessage`, for one that isn't a mesh.
    ///
    /// The steps: `FileName`, and 0 in `Polygons`, `VertexCount` and `TextureCount`; `FileSize`; `Version`
    /// and `ChunkCount`; `Chunks`; `Attachments` and `AttVersion`; `RootBone` and `BoneCount`; each chunk's
    /// `Geometry::BoneObject`. After any failure the properties stay as far as they were filled, and the
    /// file's bytes may stay in memory until the next load or the end of the object.
    /// @throws BoundsError where the file ends too early, or exceeds a limit (see \ref limits).
    /// @throws OverflowError where a size, a count or a sum of counts leads out of the 32-bit range.
    /// @throws std::bad_alloc where there is no memory for what the file holds.
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files. `paths` remembers the folders that it has listed, and `budget` what
    /// all loads with it have cost together. Both are needed during the call alone.
    [[nodiscard]] bool Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget);

    /// The same for the bytes of a file, which are copied. `name` goes to `FileName` and is not opened.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// Number of BONE blocks read by all loads of this object together: no load sets it back, so after the
    /// second it is the sum for both files. A bone without a block isn't counted.
    std::int32_t BoneCount = 0;
    /// Sum of the chunks' vertex counts as stored. Kept like `Polygons`.
    std::int32_t VertexCount = 0;
    /// Sum of the materials' texture counts as stored: records, not distinct names. Each load begins it at 0,
    /// and adds a material's count before it reads the textures.
    std::int32_t TextureCount = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    void Begin(std::u16string_view name);
    bool Parse();
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
    std::shared_ptr<Bone> MakeBone(BoneTree& tree, BoneLimits& limits, std::int32_t level);
    void ReadBone(BoneTree& tree, BoneLimits& limits, const std::shared_ptr<Bone>& bone, std::int32_t level);
    void BindBones();

    FileCursor mCursor;
};

} // namespace ZLMIM

#endif
