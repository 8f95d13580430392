#pragma once

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/membership.h"

#include <memory>
#include <string>
#include <utility>

namespace ZLMIM
{

class AssetLoad;
class ZLMModel;

/// One entry of a model's mesh table: a mesh and an animation, and the attachment point of an earlier entry
/// that the mesh hangs on.
///
/// The entries that one load of a model creates form a group that the model owns: a reference to one of them,
/// or to their list, keeps the model alive. `Membership` documents this, and what changes when a host writes
/// references.
///
/// A host may also create an entry itself, by `std::make_shared`, and load it into a model. Then the entry
/// refers to the model, and the model's list to the entry, both counted. The host breaks that ring by writing
/// a null `Parent` when it is done. It also writes a null `AttParent` if the entry hangs on itself.
/// \ingroup assets
class MeshEntry : public std::enable_shared_from_this<MeshEntry>
{
public:
    MeshEntry() = default;
    /// An entry of a group, as the load of a model creates it.
    explicit MeshEntry(Membership membership) : mMembership(std::move(membership)) {}
    MeshEntry(const MeshEntry&) = delete;
    MeshEntry& operator=(const MeshEntry&) = delete;
    ~MeshEntry();

    /// The group that the entry belongs to.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// The entry's mesh, created with it, loaded or not. Null only if a host writes null. Whether it was
    /// loaded shows in its properties, and in its `ErrorMessage` for the failures that set one.
    std::shared_ptr<ZLMIM::Mesh> Mesh = std::make_shared<ZLMIM::Mesh>();
    /// The entry's animation, created with it. Its `RootBone` is null if the entry has no animation.
    std::shared_ptr<Anim> anim = std::make_shared<Anim>();
    /// The name by which `att-parent` of a later entry finds it; in lower case after a load. Need not be
    /// unique.
    std::u16string Name;

    /// The entry of the same table that this entry hangs on, perhaps this entry itself. Null if the table
    /// names no entry, or no entry of that name was in the table so far. A further load doesn't clear it.
    [[nodiscard]] std::shared_ptr<MeshEntry> AttParent() const { return mMembership.Share(mAttParent); }
    /// Writes the reference.
    void SetAttParent(std::shared_ptr<MeshEntry> attParent)
    {
        mAttParent = mMembership.Store(std::move(attParent));
    }

    /// The attachment point of `AttParent`'s mesh that this entry hangs on, the same object as in
    /// `Mesh::Attachments`. Null if there is no attachment point of that name. A further load doesn't clear
    /// it.
    std::shared_ptr<Attachment> Att;

    /// The model whose `MeshTable` holds the entry. Null before a load.
    [[nodiscard]] std::shared_ptr<ZLMModel> Parent() const;
    /// Writes only the reference; the model's table doesn't change.
    void SetParent(std::shared_ptr<ZLMModel> parent);

    /// Writes `Name` and `Parent`, and appends this entry to the model's mesh table. Then loads the mesh and,
    /// unless its name is empty, the animation, from files named as for `Mesh::Load`. If one of these returns
    /// false, the load continues. Then, unless `AttPar` is empty, links the entry: `AttParent` is the first
    /// entry of that name so far in the table, and `Att` is the first attachment point of that entry's mesh
    /// named `AttName`. A name that isn't found changes no link. All names except those of files match in any
    /// letter case; `AttPar` and `AttName` are converted to lower case.
    ///
    /// A further load of the same entry appends it again, and loads into the same mesh and animation.
    /// @throws BoundsError like `Mesh::Load` and `Anim::Load`; the entry stays in the table, unlinked.
    /// @throws OverflowError like these; the entry stays in the table, unlinked.
    /// @throws std::bad_alloc
    /// @throws std::invalid_argument if `Model` is null, or has no `MeshTable`. Also if the entry has no
    /// `Mesh`, or has no `anim` to load an animation into; then it stays in the table.
    /// @throws std::bad_weak_ptr if the entry isn't held by a `std::shared_ptr`; then nothing is changed.
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName);

    /// The same within the load of an asset, whose limits it shares. For the library's own use.
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName, AssetLoad& load);

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    Membership mMembership;
    std::shared_ptr<MeshEntry> mAttParent;
    std::shared_ptr<ZLMModel> mParent;
};

} // namespace ZLMIM
