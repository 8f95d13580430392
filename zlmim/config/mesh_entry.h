#ifndef ZLMIM_CONFIG_MESH_ENTRY_H
#define ZLMIM_CONFIG_MESH_ENTRY_H

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/com_header.h"
#include "zlmim/model/membership.h"

#include <memory>
#include <string>

namespace ZLMIM
{

class AssetLoad;
class ZLMModel;

/// One entry of a model's mesh table: a mesh and an animation, and the attachment point of an earlier entry
/// that the mesh hangs on.
///
/// The entries that one load of a model makes are parts of a whole that the model owns: whoever holds one of
/// them, or their list, holds the model (see `Membership` for this and for what a host writes). An entry that
/// a host makes, by `std::make_shared`, and loads into a model refers to it as the model's list refers to the
/// entry, both counted: the host unties that ring by writing an empty `Parent` when it's done, and an empty
/// `AttParent` where the entry hangs on itself.
/// \ingroup assets
class MeshEntry : public std::enable_shared_from_this<MeshEntry>
{
public:
    MeshEntry() = default;
    /// A part of a whole, as a load of a model makes it.
    explicit MeshEntry(Membership membership);
    MeshEntry(const MeshEntry&) = delete;
    MeshEntry& operator=(const MeshEntry&) = delete;
    ~MeshEntry();

    /// The whole that the entry is a part of.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// The entry's mesh, made with it, loaded or not; none only if a host writes none. Whether it is loaded
    /// shows in what it holds, and in its `ErrorMessage` for those failures that have one.
    std::shared_ptr<ZLMIM::Mesh> Mesh = std::make_shared<ZLMIM::Mesh>();
    /// The entry's animation, made with it, and without a `RootBone` where the entry has none.
    std::shared_ptr<Anim> anim = std::make_shared<Anim>();
    /// What `att-parent` of a later entry finds it by, in lower case after a load. Need not be unique.
    std::u16string Name;

    /// The entry that this one hangs on, of the same table, perhaps this very one; none if none was named, or
    /// none bears that name so far in the table. Not cleared by a further load.
    [[nodiscard]] std::shared_ptr<MeshEntry> AttParent() const;
    /// Writes the reference.
    void SetAttParent(std::shared_ptr<MeshEntry> attParent);

    /// The attachment point of `AttParent`'s mesh that this one hangs on, the same object as in
    /// `Mesh::Attachments`; none if none has that name. Not cleared by a further load.
    std::shared_ptr<Attachment> Att;

    /// The model whose `MeshTable` holds the entry. None before a load.
    [[nodiscard]] std::shared_ptr<ZLMModel> Parent() const;
    /// Writes the reference; the model's table stays as it is.
    void SetParent(std::shared_ptr<ZLMModel> parent);

    /// Writes `Name` and `Parent`, and appends this entry to the model's mesh table. Then loads the mesh and,
    /// unless its name is empty, the animation, from files named as for `Mesh::Load`; what these answer stops
    /// nothing. Then, unless `AttPar` is empty, links the entry: `AttParent` is the first entry of that name
    /// so far in the table, `Att` the first attachment point of that entry's mesh named `AttName`; what isn't
    /// found links nothing. All names but those of files match in any letter case: `AttPar` and `AttName`
    /// come back in lower case.
    ///
    /// A further load of the same entry appends it again, and loads into the same mesh and animation.
    /// @throws BoundsError as `Mesh::Load` and `Anim::Load` do; the entry stays in the table, unlinked.
    /// @throws OverflowError as they do; the same.
    /// @throws std::bad_alloc
    /// @throws std::invalid_argument if there is no model, or it has no `MeshTable`; if the entry has no
    /// `Mesh`, or no `anim` for an animation, then it stays in the table.
    /// @throws std::bad_weak_ptr if the entry isn't held by a `std::shared_ptr`; nothing is changed then.
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName);

    /// The same as a part of the load of an asset, whose limits it shares. For the library's own use.
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName, AssetLoad& load);

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    void Attach(const Collection<MeshEntry>& table, const std::u16string& attPar,
                const std::u16string& attName, AssetLoad& load);

    Membership mMembership;
    std::shared_ptr<MeshEntry> mAttParent;
    std::shared_ptr<ZLMModel> mParent;
};

} // namespace ZLMIM

#endif
