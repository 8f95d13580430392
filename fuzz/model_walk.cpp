#include "fuzz/model_walk.h"

#include "fuzz/load_attempt.h"
#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <functional>
#include <set>
#include <stdexcept>
#include <type_traits>

namespace ZLMIM::Fuzzing
{
namespace
{

void Require(bool holds, const char* what)
{
    if (!holds)
        throw std::logic_error(what);
}

template <class T>
bool Contains(const Collection<T>& list, const std::shared_ptr<T>& object)
{
    return std::find(list.begin(), list.end(), object) != list.end();
}

class Walker
{
public:
    void Walk(const std::shared_ptr<ZLMModel>& model, std::size_t depth)
    {
        Require(depth <= kMaxModelDepth + 1,
                "no model is nested deeper than an empty one below the last level");
        // A model may be in its list several times.
        if (!mSeen.insert(model.get()).second)
            return;
        See(model->AssetFileName, model->Author, model->UserName, model->Kind, model->Description,
            model->ZLMBuild, model->kuid());
        See(depth, model->Bogies->Count(), static_cast<bool>(model->Pantograph));
        Require(LowerCase(Trim(model->kuid())) == model->kuid(), "a kuid is trimmed and in lower case");
        model->SetMeshTable(model->MeshTable());
        WalkList(*model->MeshTable(), [&](const auto& entry) { WalkEntry(*entry, model); });

        const std::int32_t ahead = model->BogieNames->Count() - model->Bogies->Count();
        Require(ahead == 0 || ahead == 1, "each bogey has its name, and a failed one no more than that");
        WalkList(*model->BogieNames,
                 [](const auto& name) { Require(name.starts_with(u"bogey"), "a bogey's name is its key"); });
        WalkList(*model->Bogies, [&](const auto& bogey) { Walk(bogey, depth + 1); });
        if (model->Pantograph)
            Walk(model->Pantograph, depth + 1);
    }

    /// A hash of everything visited: the same for equal models.
    [[nodiscard]] std::uint64_t Digest() const { return mDigest; }

private:
    template <class T>
    void SeeOne(const T& value)
    {
        if constexpr (std::is_integral_v<T>)
            mDigest = mDigest * 31 + static_cast<std::uint64_t>(value);
        else
            mDigest = mDigest * 31 + std::hash<std::string>()(ToUtf8(value));
    }
    template <class... T>
    void See(const T&... values)
    {
        (SeeOne(values), ...);
    }

    template <class T, class Visit>
    void WalkList(const Collection<T>& list, const Visit& visit)
    {
        for (const auto& entry : list)
            visit(entry);
        Require(list.Entries().size() == static_cast<std::size_t>(list.Count()), "the count is the size");
        for (const std::int32_t number : {0, list.Count() + 1})
        {
            // Throwing is slow: the first lists are enough.
            if (++mProbes < 16)
                Require(Testing::OutcomeOf([&] { return list.Item(number); }) == Testing::kBounds,
                        "a number outside throws");
        }
    }

    void WalkEntry(MeshEntry& entry, const std::shared_ptr<ZLMModel>& model)
    {
        See(entry.Name, entry.Mesh->FileName, entry.Mesh->ErrorMessage, entry.anim->FileName);
        Require(LowerCase(entry.Name) == entry.Name, "an entry's name is in lower case");
        if (mWalkedFiles < kWalkedFiles)
        {
            ++mWalkedFiles;
            See(Testing::Walk(*entry.Mesh), Testing::Walk(*entry.anim));
        }

        Require(entry.Parent() == model, "an entry's parent is the model whose table holds it");
        const auto attParent = entry.AttParent();
        Require(!attParent || Contains(*model->MeshTable(), attParent), "entries hang on those of one table");
        Require(!entry.Att || (attParent && Contains(*attParent->Mesh->Attachments, entry.Att)),
                "an attachment point is one of the mesh that the entry hangs on");
        See(attParent ? attParent->Name : u"", entry.Att ? entry.Att->Name : u"");
        entry.SetParent(entry.Parent());
        entry.SetAttParent(attParent);
    }

    /// Only the meshes and animations of the first entries are walked: they have fuzz targets of their own.
    static constexpr std::int32_t kWalkedFiles = 3;

    std::set<const ZLMModel*> mSeen;
    std::int32_t mWalkedFiles = 0;
    std::int32_t mProbes = 0;
    std::uint64_t mDigest = 0;
};

std::uint64_t LoadAndWalk(const std::shared_ptr<ZLMModel>& model, const std::u16string& name)
{
    Attempt([&] { model->Load(name); });
    Walker walker;
    walker.Walk(model, 1);
    return walker.Digest();
}

} // namespace

void LoadTwice(const std::shared_ptr<FileSystem>& files, const std::u16string& first,
               const std::u16string& second)
{
    auto model = std::make_shared<ZLMModel>(files);
    LoadAndWalk(model, first);
    const auto digest = LoadAndWalk(model, second);
    Require(digest == LoadAndWalk(std::make_shared<ZLMModel>(files), second), "a load leaves nothing behind");

    std::shared_ptr<MeshEntry> entry;
    if (const auto table = model->MeshTable(); table->Count() > 0)
        entry = table->Item(1);
    model.reset();
    if (entry)
        Require(Contains(*entry->Parent()->MeshTable(), entry), "an entry holds its model");
}

} // namespace ZLMIM::Fuzzing
