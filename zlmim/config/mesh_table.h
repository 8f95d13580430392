#pragma once

#include "zlmim/config/mesh_entry.h"
#include "zlmim/model/collection.h"
#include "zlmim/model/membership.h"

#include <deque>
#include <memory>
#include <optional>

namespace ZLMIM
{

/// The mesh table that one load of a model creates: the group (see `Membership`) of its entries and their
/// list. The model owns it.
/// \ingroup inside
class MeshTable
{
public:
    /// An empty table. `model` may be empty while the model is being constructed.
    [[nodiscard]] static std::shared_ptr<MeshTable> Make(const std::weak_ptr<ZLMModel>& model)
    {
        auto table = std::make_shared<MeshTable>();
        table->mList.emplace(Membership(table, model));
        return table;
    }

    /// The entries that are in the table.
    [[nodiscard]] Collection<MeshEntry>& List() { return *mList; }

    /// A new entry that isn't in the list yet.
    [[nodiscard]] MeshEntry& MakeEntry() { return mEntries.emplace_back(mList->Group()); }

private:
    std::optional<Collection<MeshEntry>> mList;
    std::deque<MeshEntry> mEntries;
};

} // namespace ZLMIM
