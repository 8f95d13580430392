#ifndef ZLMIM_CONFIG_ZLM_MODEL_H
#define ZLMIM_CONFIG_ZLM_MODEL_H

#include "zlmim/config/file_system.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/load_limits.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ZLMIM
{

class AssetLoad;
class PathResolver;
class LineReader;
class MeshTable;
struct ConfigLine;
struct MeshTableKeys;

/// The object representing one config file (`config.txt`), the description of an asset: its identity, its
/// mesh table with the meshes and animations, and the assets that it refers to as further models.
///
/// Each load begins with an empty model, all lists new: former ones stay with whoever holds them. The texts
/// of keys are stored as the file has them, the quotation marks around them dropped; the last line with a key
/// counts. Keys match in any letter case, also inside of blocks that aren't known; unknown ones are ignored.
///
/// Models are made by `std::make_shared`, since the entries of their mesh tables refer back to them.
/// \ingroup assets
class ZLMModel : public std::enable_shared_from_this<ZLMModel>
{
public:
    /// An empty model, with empty lists. It reads config files through `files`, and so do the models that it
    /// refers to; from the disk if `files` is null. Meshes and animations are always read from the disk.
    explicit ZLMModel(std::shared_ptr<FileSystem> files = nullptr);
    ZLMModel(const ZLMModel&) = delete;
    ZLMModel& operator=(const ZLMModel&) = delete;
    ~ZLMModel();

    /// The entries of all blocks `mesh-table`, in file order; also one whose files don't load. Without any,
    /// one named `default` for the mesh of `AssetFileName`, if that file is there.
    [[nodiscard]] std::shared_ptr<Collection<MeshEntry>> MeshTable() const;
    /// Puts another list in its place, until the next load.
    void SetMeshTable(std::shared_ptr<Collection<MeshEntry>> meshTable);

    /// Value of `asset-filename`: the one mesh of an asset without a mesh table, without ".im". Its folder is
    /// the config file's.
    std::u16string AssetFileName;
    /// Value of `author`.
    std::u16string Author;
    /// Value of `username`.
    std::u16string UserName;
    /// Value of `kind`.
    std::u16string Kind;
    /// Value of `description`; its lines are parted by CR LF.
    std::u16string Description;
    /// Value of `zelmar-build`: text, not read as a number.
    std::u16string ZLMBuild;
    /// One model for each key that begins with `bogey`, in file order. An asset that is referred to again
    /// stands here again, as the same object; one that wasn't found is an empty model.
    std::shared_ptr<Collection<ZLMModel>> Bogies;
    /// The keys that `Bogies` comes from, in lower case, such as `bogey-0`: entry by entry, but for one key
    /// more where the load of a bogey raised.
    std::shared_ptr<Collection<std::u16string>> BogieNames;
    /// The model that the key `pantograph` refers to, empty if it wasn't found; none without such a key. The
    /// last of several.
    std::shared_ptr<ZLMModel> Pantograph;

    /// The asset's identifier, value of `kuid`, without blanks at its ends and in lower case.
    [[nodiscard]] const std::u16string& kuid() const noexcept { return mKuid; }
    /// Stores `kuid` without blanks at its ends and in lower case.
    void SetKuid(const std::u16string& kuid);

    /// What one `Load` may cost, with all that it loads. The defaults are wide; a host that loads files from
    /// people it doesn't trust sets `kUntrustedLimits`.
    LoadLimits Limits;

    /// Loads up the config file of that name: text with backslashes, relative to the working folder, whose
    /// letter case doesn't matter where the exact name isn't found. All earlier content goes first. A file
    /// that doesn't exist leaves the model empty and is no failure; nor is a mesh, an animation or a
    /// reference that doesn't load.
    ///
    /// In the mesh table, names in `mesh` count from the config file's folder, those in `anim` from the
    /// working folder; an entry without `anim` takes the `anim.kin` beside the config file, if there is one.
    /// A mesh whose name ends in `.lm` stands for the one of level 1 in the list beside it (`.lm.txt`).
    ///
    /// References are followed at once, each by a model of its own, which may refer to further ones. A kuid
    /// such as `<kuid:1:2>` is looked for as `..\kuid 1 2\config.txt` from the working folder, then by the
    /// `kuid` of each config file one and two levels below the folder that lies two levels above the config
    /// file's own, or one where that is a root (these are compared in lower case, so a reference in capitals
    /// finds none). A reference back to a file that is open isn't found, nor one past `kMaxModelDepth` or
    /// `kMaxModels`.
    ///
    /// An error, here or in a model referred to, ends the load; the model keeps what was filled.
    /// @throws BoundsError as `Mesh::Load` and `Anim::Load` do, and where `Limits` are exceeded.
    /// @throws OverflowError as they do.
    /// @throws FileSystemError from a file or folder that can't be read, a last line that opens a quoted
    /// value, a mesh table that ends with the key `effects`, or a reference in a file whose name has no
    /// folder.
    /// @throws std::bad_alloc
    /// @throws std::bad_weak_ptr if the model has a mesh entry, and isn't held by a `std::shared_ptr`.
    void Load(const std::u16string& ConfigFileName);

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    void Load(const std::u16string& configFileName, AssetLoad& load);
    void LoadConfig(const std::u16string& configFileName, AssetLoad& load);
    void ResetModel(const std::shared_ptr<PathResolver>& paths);
    void ParseConfig(LineReader& lines, AssetLoad& load);
    void ParseKey(ConfigLine& line, LineReader& lines, AssetLoad& load);
    class MeshTableReader;
    void ParseMeshTable(LineReader& lines, AssetLoad& load);
    void LoadEntry(const MeshTableKeys& keys, AssetLoad& load);
    [[nodiscard]] bool FileExists(const std::u16string& path, AssetLoad& load);
    [[nodiscard]] std::u16string MeshPath(const std::u16string& value, AssetLoad& load);
    [[nodiscard]] std::u16string ResolveLodMesh(const std::u16string& listFile, AssetLoad& load);
    void AddBogey(const std::u16string& value, const std::u16string& key, AssetLoad& load);
    [[nodiscard]] std::shared_ptr<ZLMModel> MakeReferredModel(AssetLoad& load) const;
    void LoadReference(ZLMModel& model, const std::u16string& kuid, AssetLoad& load);
    [[nodiscard]] std::u16string FindConfigFile(const std::u16string& kuid, AssetLoad& load);

    /// The host's own service; null for the disk.
    std::shared_ptr<FileSystem> mHostFiles;
    /// The service of the last load.
    std::shared_ptr<FileSystem> mFSO;
    std::u16string mKuid;
    /// Whether there is an `anim.kin` beside the config file, once that was asked.
    std::optional<bool> mHasFolderAnim;
    /// Folder of the config file with its trailing backslash; empty if its name has none.
    std::u16string mPath;
    /// The table of the last load; what `MeshTable` gives unless a host has written another list.
    std::shared_ptr<ZLMIM::MeshTable> mOwnTable;
    std::shared_ptr<Collection<MeshEntry>> mMeshTable;
};

} // namespace ZLMIM

#endif
