#pragma once

#include "zlmim/mesh/attachment.h"
#include "zlmim/mesh/bone.h"
#include "zlmim/mesh/chunk.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/load_budget.h"
#include "zlmim/reader/path_resolver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM
{

class FileCursor;

/// The object representing one mesh file (`.im`): its chunks of material and geometry, its attachment points
/// and its skeleton. A new mesh has null lists and no skeleton; `Load` creates them.
/// \ingroup meshes
class Mesh
{
public:
    Mesh() = default;
    Mesh(const Mesh&) = delete;
    Mesh& operator=(const Mesh&) = delete;

    /// Error text, set by a `Load` that fails for one of these reasons:
    ///
    /// - "Not a ZLM IM file - no JIRF", "Not a ZLM IM file - no IDXM": the first bytes aren't those of a mesh
    ///   file.
    /// - "Not a ZLM IM file - CHNK missing": there is another block in place of one of its chunks.
    ///
    /// No load clears it: if a later `Load` returns false for another reason, the old text remains.
    std::u16string ErrorMessage;
    /// Number of chunks declared by the info block; may be negative. After `Load` returned true, `Chunks` has
    /// that many entries, or is empty for a negative number.
    std::int32_t ChunkCount = 0;
    /// Version in the info block, as stored.
    std::int32_t Version = 0;
    /// Length of the file in bytes. Unchanged if the file isn't found, can't be read, or is too long.
    std::int32_t FileSize = 0;
    /// All attachment points in file order. Each load that reads past the chunks creates a new list, which is
    /// empty if the file has no ATCH block. Null before the first such load.
    std::shared_ptr<Collection<Attachment>> Attachments;
    /// The chunks that make up the mesh, in file order. Each load that reads past the info block creates a
    /// new list. Null before the first such load. A chunk whose MATL or GEOM block threw isn't in it.
    std::shared_ptr<Collection<Chunk>> Chunks;
    /// Root of the skeleton. Each load that finds a SKEL block creates a new tree. If reading the block
    /// throws, the tree keeps the bones that were read before. If a later file has no such block, the old
    /// tree stays, and the new chunks are bound to it. Null if no file had one.
    std::shared_ptr<Bone> RootBone;
    /// Version of the ATCH block, as stored. Unchanged if a later file has no such block.
    std::int32_t AttVersion = 0;
    /// Number of triangles in the whole mesh: the sum of the chunks' primitive counts as stored, whatever the
    /// primitives' type. Each load starts at 0, and adds a chunk's count before it reads the chunk's arrays.
    std::int32_t Polygons = 0;
    /// The name passed to the last load, unchanged.
    std::u16string FileName;

    /// Reads the file of that name: text with backslashes, relative to the working folder. Letter case is
    /// ignored if there is no exact match. Returns true if the whole file was read. Returns false if the file
    /// is missing, unreadable, empty, longer than `kMaxFileSize` or too large for the available memory. Also
    /// returns false, with an `ErrorMessage`, if the file isn't a mesh.
    ///
    /// Sets, in this order: `FileName`, and 0 in `Polygons`, `VertexCount` and `TextureCount`; `FileSize`;
    /// `Version` and `ChunkCount`; `Chunks`; `Attachments` and `AttVersion`; `RootBone` and `BoneCount`; each
    /// chunk's `Geometry::BoneObject`. After a failure, the properties keep the values that were read before.
    /// @throws BoundsError if the file ends too early, or exceeds a limit (see \ref limits).
    /// @throws OverflowError if a size, a count or a sum of counts is outside the 32-bit range.
    /// @throws std::bad_alloc if there isn't enough memory for the file's objects.
    [[nodiscard]] bool Load(std::u16string_view name);

    /// The same for one of many files. `paths` caches the folders that it lists. `budget` is shared by all
    /// loads that use it. Both are used during the call only.
    [[nodiscard]] bool Load(std::u16string_view name, PathResolver& paths, LoadBudget& budget);

    /// The same for the bytes of a file, which are copied. `name` is stored in `FileName` and isn't opened.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::u16string_view name = {});

    /// Number of BONE blocks read by all loads of this object together. No load resets it, so after a second
    /// load it is the sum for both files. A bone without a block isn't counted.
    std::int32_t BoneCount = 0;
    /// Sum of the chunks' vertex counts as stored. Computed like `Polygons`.
    std::int32_t VertexCount = 0;
    /// Sum of the materials' texture counts as stored: records, not distinct names. Each load starts at 0,
    /// and adds a material's count before it reads the textures.
    std::int32_t TextureCount = 0;

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    void Begin(std::u16string_view name);
    bool Parse(FileCursor& cursor);
    bool ReadHeader(FileCursor& cursor);
    void ReadInfo(FileCursor& cursor);
    bool ReadChunks(FileCursor& cursor);
    bool ReadChunk(FileCursor& cursor);
    void ReadMaterial(FileCursor& cursor, Material& material);
    std::shared_ptr<Texture> ReadTexture(FileCursor& cursor);
    void ReadGeometry(FileCursor& cursor, Geometry& geometry);
    void SkipInfluences(FileCursor& cursor);
    void ReadAttachments(FileCursor& cursor);
    void ReadSkeleton(FileCursor& cursor);
    class BoneTree;
    void ReadBone(FileCursor& cursor, BoneTree& tree, const std::shared_ptr<Bone>& bone, std::int32_t level);
    void BindBones();
};

} // namespace ZLMIM
