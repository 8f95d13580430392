#pragma once

#include "zlmim/config/file_system.h"
#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/reader/load_limits.h"

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
/// Each load begins with an empty model and new lists. Old lists stay with their other holders. The values of
/// keys are stored as in the file, without the quotation marks around them. The last line with a key counts.
/// Keys match in any letter case, also inside unknown blocks. Unknown keys are ignored.
///
/// Create models by `std::make_shared`, since the entries of their mesh tables refer back to them.
/// \ingroup assets
class ZLMModel : public std::enable_shared_from_this<ZLMModel>
{
public:
    /// An empty model, with empty lists. It and the models that it refers to read config files through
    /// `files`, or from the disk if `files` is null. Meshes and animations are always read from the disk.
    explicit ZLMModel(std::shared_ptr<FileSystem> files = nullptr);
    ZLMModel(const ZLMModel&) = delete;
    ZLMModel& operator=(const ZLMModel&) = delete;
    ~ZLMModel();

    /// The entries of all blocks `mesh-table`, in file order, including those whose files don't load. If
    /// there are no entries, the table has one named `default` for the mesh of `AssetFileName`, if that file
    /// exists.
    [[nodiscard]] std::shared_ptr<Collection<MeshEntry>> MeshTable() const;
    /// Replaces the list until the next load.
    void SetMeshTable(std::shared_ptr<Collection<MeshEntry>> meshTable);

    /// Value of `asset-filename`: the only mesh of an asset without a mesh table, without ".im". It is in the
    /// config file's folder.
    std::u16string AssetFileName;
    /// Value of `author`.
    std::u16string Author;
    /// Value of `username`.
    std::u16string UserName;
    /// Value of `kind`.
    std::u16string Kind;
    /// Value of `description`; its lines are separated by CR LF.
    std::u16string Description;
    /// Value of `zelmar-build`, as text, not converted to a number.
    std::u16string ZLMBuild;
    /// One model for each key that begins with `bogey`, in file order. An asset that is referred to twice is
    /// in the list twice, as the same object. An asset that wasn't found is an empty model.
    std::shared_ptr<Collection<ZLMModel>> Bogies;
    /// The keys of the entries of `Bogies`, in lower case, such as `bogey-0`, in the same order. If the load
    /// of a bogey threw, there is one more key than entries.
    std::shared_ptr<Collection<std::u16string>> BogieNames;
    /// The model that the key `pantograph` refers to, which is empty if the asset wasn't found. Null if there
    /// is no such key. Of several keys, the last one counts.
    std::shared_ptr<ZLMModel> Pantograph;

    /// The asset's identifier: the value of `kuid`, without blanks at its ends and in lower case.
    [[nodiscard]] const std::u16string& kuid() const noexcept { return mKuid; }
    /// Stores `kuid` without blanks at its ends and in lower case.
    void SetKuid(const std::u16string& kuid);

    /// Maximum cost of one `Load`, with all that it loads. The defaults are generous. A host that loads files
    /// from untrusted sources sets `kUntrustedLimits`.
    LoadLimits Limits;

    /// Loads the config file of that name: text with backslashes, relative to the working folder. Letter case
    /// is ignored if there is no exact match. All earlier content is cleared first. If the file doesn't
    /// exist, the model stays empty, and nothing is thrown. Nor is anything thrown for a mesh, an animation
    /// or a reference that doesn't load.
    ///
    /// In the mesh table, names in `mesh` are relative to the config file's folder, names in `anim` to the
    /// working folder. An entry without `anim` uses the `anim.kin` next to the config file, if it exists. A
    /// mesh whose name ends in `.lm` is replaced by the mesh of level 1 in the list next to it (`.lm.txt`).
    ///
    /// References are followed at once. Each creates a model of its own, which may refer to further ones. A
    /// kuid such as `<kuid:1:2>` is first looked for as `..\kuid 1 2\config.txt` from the working folder.
    /// Then the `kuid` of each config file is compared, one and two levels below a start folder. The start
    /// folder is two levels above the config file's own folder, or one level if that is a root. These kuids
    /// are compared in lower case, so a reference in capitals finds nothing. A reference back to an open file
    /// isn't found, nor is one past `kMaxModelDepth` or `kMaxModels`.
    ///
    /// An error, here or in a model referred to, ends the load; the model keeps the values that were read
    /// before.
    /// @throws BoundsError like `Mesh::Load` and `Anim::Load`, and if `Limits` are exceeded.
    /// @throws OverflowError like these.
    /// @throws FileSystemError if a file or folder can't be read, if the last line opens a quoted value, if a
    /// mesh table ends with the key `effects`, or if there is a reference in a file whose name has no folder.
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
    /// Whether there is an `anim.kin` next to the config file; `std::nullopt` before the first check.
    std::optional<bool> mHasFolderAnim;
    /// Folder of the config file with its trailing backslash; empty if its name has none.
    std::u16string mPath;
    /// The table of the last load. `MeshTable` returns it unless a host has written another list.
    std::shared_ptr<ZLMIM::MeshTable> mOwnTable;
    std::shared_ptr<Collection<MeshEntry>> mMeshTable;
};

} // namespace ZLMIM
