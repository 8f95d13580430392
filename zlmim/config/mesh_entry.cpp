#include "zlmim/config/mesh_entry.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace ZLMIM
{

MeshEntry::MeshEntry(Membership membership) : mMembership(std::move(membership)) {}

MeshEntry::~MeshEntry()
{
    // Fixed order: the destructors of a host's objects may observe it.
    Mesh.reset();
    anim.reset();
    mAttParent.reset();
    Att.reset();
    mParent.reset();
}

std::shared_ptr<MeshEntry> MeshEntry::AttParent() const { return mMembership.Share(mAttParent); }

void MeshEntry::SetAttParent(std::shared_ptr<MeshEntry> attParent)
{
    mAttParent = mMembership.Store(std::move(attParent));
}

std::shared_ptr<ZLMModel> MeshEntry::Parent() const { return mMembership.Share(mParent); }

void MeshEntry::SetParent(std::shared_ptr<ZLMModel> parent)
{
    mParent = mMembership.Store(std::move(parent));
}

void MeshEntry::Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
                     const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
                     std::u16string& AttName)
{
    AssetLoad load(Model ? Model->Limits : LoadLimits());
    Load(Model, sName, MeshFile, AnimFile, AttPar, AttName, load);
}

void MeshEntry::Load(const std::shared_ptr<ZLMModel>& Model, const std::u16string& sName,
                     const std::u16string& MeshFile, const std::u16string& AnimFile, std::u16string& AttPar,
                     std::u16string& AttName, AssetLoad& load)
{
    // The entry is held by a `std::shared_ptr`, or belongs to its model's table.
    const auto self =
        mMembership.IsPart() ? mMembership.Share(Membership::Uncounted(*this)) : shared_from_this();
    Name = LowerCase(sName);
    AttPar = LowerCase(AttPar);
    AttName = LowerCase(AttName);
    SetParent(Model);
    const auto table = Model ? Model->MeshTable() : nullptr;
    if (!table)
        throw std::invalid_argument("a mesh entry is loaded into a model that has a mesh table");
    // Added before any file is read: an entry whose files fail to load keeps its place.
    table->Add(self);
    if (!Mesh || (!AnimFile.empty() && !anim))
        throw std::invalid_argument("an entry is loaded into its mesh and its animation");
    static_cast<void>(
        Mesh->Load(MeshFile, *load.Paths(), load.Budget())); // continues if the mesh doesn't load
    if (!AnimFile.empty())
        static_cast<void>(anim->Load(AnimFile, *load.Paths(), load.Budget())); // or the animation
    if (!AttPar.empty())
        Attach(*table, AttPar, AttName, load);
}

void MeshEntry::Attach(const Collection<MeshEntry>& table, const std::u16string& attPar,
                       const std::u16string& attName, AssetLoad& load)
{
    const auto entries = table.Entries();
    load.Budget().ChargeWork(LoadCost::NameComparison * table.Count());
    const auto entry =
        std::find_if(entries.begin(), entries.end(),
                     [&](const auto& candidate) { return candidate && candidate->Name == attPar; });
    if (entry == entries.end())
        return;
    SetAttParent(table.Group().Share(*entry));
    // A mesh that failed early has no list of attachments.
    if (!(*entry)->Mesh || !(*entry)->Mesh->Attachments)
        return;
    const auto attachments = (*entry)->Mesh->Attachments->Entries();
    load.Budget().ChargeWork(LoadCost::NameComparison * (*entry)->Mesh->Attachments->Count());
    const auto attachment =
        std::find_if(attachments.begin(), attachments.end(),
                     [&](const auto& candidate) { return candidate && candidate->Name == attName; });
    if (attachment != attachments.end())
        Att = *attachment;
}

} // namespace ZLMIM
