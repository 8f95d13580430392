#ifndef ZLMIM_CONFIG_ASSET_LOAD_H
#define ZLMIM_CONFIG_ASSET_LOAD_H

#include "zlmim/config/file_system.h"
#include "zlmim/config/reference_search.h"
#include "zlmim/reader/path_resolver.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ZLMIM
{

class Anim;
class Mesh;

/// \addtogroup limits
/// @{

/// Models that may be nested in one another by references, the outermost counted. What would lie deeper isn't
/// found.
inline constexpr std::size_t kMaxModelDepth = 32;

/// Models that one outermost load may make, its own counted. Further ones aren't found.
inline constexpr std::int32_t kMaxModels = 4'096;

/// Entries of mesh tables that one outermost load may meet.
inline constexpr std::int32_t kMaxMeshEntries = 16'384;
/// Keys that begin with `bogey`, of all models together, that one outermost load may meet.
inline constexpr std::int32_t kMaxReferenceKeys = 16'384;

/// What one outermost load may spend, in bytes: the memory of what it makes, beyond what the files that it
/// reads account for, and what it reads again and again. Work that leaves no memory behind is counted as if
/// it did. Past it no mesh, no animation and no reference is loaded any more, but what is being read is read
/// to its end; nothing is raised.
inline constexpr std::int64_t kLoadAllowance = std::int64_t{384} * 1'048'576;

/// What the searches of one outermost load may read of other assets' configs, in characters. Past it nothing
/// more is found; nothing is raised.
inline constexpr std::int64_t kSearchAllowance = 1'024 * std::int64_t{1'048'576};

/// @}

/// What the load of a model shares with those of the models that it refers to: the files that are being read,
/// the folders that have been listed and searched, and what hasn't been spent yet. Keeps references from
/// going round in circles, and a small file from costing much.
/// \ingroup inside
class AssetLoad
{
public:
    AssetLoad() = default;
    AssetLoad(const AssetLoad&) = delete;
    AssetLoad& operator=(const AssetLoad&) = delete;
    ~AssetLoad() { mPaths->Forget(); }

    /// A file is being read, as long as this lives.
    class Link
    {
    public:
        /// The file that bears `fileIdentity`, until this goes; `load` must live as long.
        Link(AssetLoad& load, std::u16string fileIdentity);
        Link(const Link&) = delete;
        Link& operator=(const Link&) = delete;
        ~Link();

    private:
        AssetLoad& mLoad;
    };

    /// Whether one more model may be made and loaded, below those that are being read. Counts it.
    [[nodiscard]] bool AdmitModel();
    /// Whether the file of that identity isn't being read already.
    [[nodiscard]] bool AdmitFile(const std::u16string& fileIdentity) const;

    /// Counts one more entry of a mesh table.
    /// @throws BoundsError where it would be one too many.
    void CountMeshEntry();
    /// Counts one more key that begins with `bogey`.
    /// @throws BoundsError where it would be one too many.
    void CountReferenceKey();

    /// Takes from what is left, see `kLoadAllowance`.
    void Spend(std::int64_t bytes) noexcept { mLeft -= bytes; }
    /// Whether nothing more is to be loaded. What is being read is read to its end.
    [[nodiscard]] bool IsSpent() const noexcept { return mLeft < 0; }
    /// Takes from what is left, see `kSearchAllowance`.
    void SpendOnSearch(std::int64_t characters) noexcept { mSearchLeft -= characters; }
    /// Whether no search is to go on.
    [[nodiscard]] bool IsSearchSpent() const noexcept { return mSearchLeft < 0 || IsSpent(); }
    /// Spends what a mesh holds. `name` is the name of its file.
    void SpendOn(const Mesh& mesh, std::u16string_view name);
    /// Spends what an animation holds.
    void SpendOn(const Anim& anim, std::u16string_view name);
    /// The stream of the file that was linked last, which spends what it gives unless this is the first time
    /// that the file is read.
    [[nodiscard]] std::unique_ptr<TextStream> Counted(std::unique_ptr<TextStream> stream);
    /// A stream that spends all that it gives.
    [[nodiscard]] std::unique_ptr<TextStream> Spending(std::unique_ptr<TextStream> stream);

    /// The folders that have been listed.
    [[nodiscard]] PathResolver& Paths() noexcept { return *mPaths; }
    /// The same, for a service object, which may outlive the load.
    [[nodiscard]] const std::shared_ptr<PathResolver>& SharedPaths() const noexcept { return mPaths; }

    /// The search for references that starts at a folder.
    [[nodiscard]] ReferenceSearch& SearchFrom(const Folder& start);

private:
    void SpendOn(std::int64_t memory, std::int64_t fileSize, std::u16string_view name);

    std::shared_ptr<PathResolver> mPaths = std::make_shared<PathResolver>();
    std::map<std::u16string, ReferenceSearch> mSearches;
    std::vector<std::u16string> mFiles;
    std::set<std::u16string> mFilesRead;
    std::set<std::pair<std::uint64_t, std::uint64_t>> mBinaryFilesRead;
    bool mIsFirstReading = true;
    std::int32_t mModels = 1;
    std::int32_t mMeshEntries = 0;
    std::int32_t mReferenceKeys = 0;
    std::int64_t mLeft = kLoadAllowance;
    std::int64_t mSearchLeft = kSearchAllowance;
    std::int64_t mSpentUnseen = 0;
};

} // namespace ZLMIM

#endif
