#ifndef ZLMIM_CONFIG_MESH_ENTRY_H
#define ZLMIM_CONFIG_MESH_ENTRY_H

#include "zlmim/anim/anim.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/facade.h"
#include "zlmim/model/whole.h"

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
/// entry, both counted: the host unties that ring by writing an empty `Parent` when it's done.
class MeshEntry : public std::enable_shared_from_this<MeshEntry>
{
public:
    MeshEntry() = default;
    /// A part of a whole.
    explicit MeshEntry(Membership membership);
    MeshEntry(const MeshEntry&) = delete;
    MeshEntry& operator=(const MeshEntry&) = delete;
    ~MeshEntry() = default;

    [[nodiscard]] const Membership& Whole() const noexcept { return mMembership; }

    /// The entry's mesh, there from the start, loaded or not.
    std::shared_ptr<ZLMIM::Mesh> Mesh = std::make_shared<ZLMIM::Mesh>();
    /// The entry's animation, there from the start, loaded or not.
    std::shared_ptr<Anim> anim = std::make_shared<Anim>();
    /// In lower case after a load.
    std::u16string Name;

    /// The entry that this one hangs on, of the same table, perhaps this very one; none if there is none.
    [[nodiscard]] std::shared_ptr<MeshEntry> AttParent() const;
    void SetAttParent(std::shared_ptr<MeshEntry> attParent);

    /// The attachment point of `AttParent`'s mesh that this one hangs on; none if none was matched.
    std::shared_ptr<Attachment> Att;

    /// The model whose `MeshTable` holds the entry.
    [[nodiscard]] std::shared_ptr<ZLMModel> Parent() const;
    void SetParent(std::shared_ptr<ZLMModel> parent);

    /// Appends this entry to the model's mesh table, then loads the mesh and, unless its name is empty, the
    /// animation, whose answers nobody looks at: see their `ErrorMessage`. Then links the entry to `AttName`,
    /// an attachment point of `AttPar`, an entry above it in the table; a name that isn't found links
    /// nothing. All names but those of files match in any letter case: `AttPar` and `AttName` come back in
    /// lower case.
    /// @throws BoundsError, OverflowError from the readers; the entry stays in the table
    /// @throws std::invalid_argument if there is no model, or it has no `MeshTable`; if the entry has no
    /// `Mesh`, or no `anim` for an animation, then it stays in the table
    /// @throws std::bad_weak_ptr if the entry isn't held by a `std::shared_ptr`
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName);

    /// The same as a part of the load of an asset, which may have nothing left for the files of this entry.
    void Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
              const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
              std::u16string& AttName, AssetLoad& load);

    /// What a host of the component holds.
    ZLMIM::Facade Facade;

private:
    void Attach(const Collection<MeshEntry>& table, const std::u16string& attPar,
                const std::u16string& attName, AssetLoad& load);

    Membership mMembership;
    std::shared_ptr<MeshEntry> mAttParent;
    std::shared_ptr<ZLMModel> mParent;
};

} // namespace ZLMIM

#endif
