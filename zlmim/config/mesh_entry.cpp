#include "zlmim/config/mesh_entry.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace ZLMIM
{
namespace
{

/// The first object of that name in `list`; null if there is no such object.
template <class T>
std::shared_ptr<T> FirstNamed(const Collection<T>& list, const std::u16string& name, LoadBudget& budget)
{
    budget.ChargeWork(LoadCost::NameComparison * list.Count());
    const auto entries = list.Entries();
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry && entry->Name == name; });
    if (found == entries.end())
        return nullptr;
    return list.Item(static_cast<std::int32_t>(found - entries.begin()) + 1);
}

} // namespace

MeshEntry::~MeshEntry()
{
    // Fixed order: the destructors of a host's objects may observe it.
    Mesh.reset();
    anim.reset();
    mAttParent.reset();
    Att.reset();
    mParent.reset();
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
    if (AttPar.empty())
        return;
    const auto entry = FirstNamed(*table, AttPar, load.Budget());
    if (!entry)
        return;
    SetAttParent(entry);
    // A mesh that failed early has no list of attachments.
    if (!entry->Mesh || !entry->Mesh->Attachments)
        return;
    if (const auto attachment = FirstNamed(*entry->Mesh->Attachments, AttName, load.Budget()))
        Att = attachment;
}

} // namespace ZLMIM
