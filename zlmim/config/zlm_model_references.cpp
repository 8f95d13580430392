#include "zlmim/config/asset_load.h"
#include "zlmim/config/mesh_table.h"
#include "zlmim/config/reference_search.h"
#include "zlmim/config/zlm_model.h"

#include <stdexcept>

namespace ZLMIM
{

void ZLMModel::AddBogey(const std::u16string& value, const std::u16string& key, AssetLoad& load)
{
    // Kept, since a host's service may write the properties during the load.
    const auto bogies = Bogies;
    const auto bogieNames = BogieNames;
    if (!bogies || !bogieNames)
        throw std::invalid_argument("a model is loaded into its lists of bogeys");
    // The name is always added first: after a failure below, there is one more name than models.
    load.Budget().ChargeObjects<std::u16string>();
    load.Budget().ChargeText(key);
    bogieNames->Add(key);
    load.Budget().ChargeWork(LoadCost::NameComparison * bogies->Count());
    for (const auto& bogey : bogies->Entries())
    {
        if (bogey && bogey->kuid() == value)
        {
            bogies->Add(bogey);
            return;
        }
    }
    const auto bogey = MakeReferredModel(load);
    LoadReference(*bogey, value, load);
    bogies->Add(bogey);
}

std::shared_ptr<ZLMModel> ZLMModel::MakeReferredModel(AssetLoad& load) const
{
    load.Budget()
        .ChargeObjects<ZLMModel, ZLMIM::MeshTable, Collection<MeshEntry>, Collection<ZLMModel>,
                       Collection<std::u16string>>();
    return std::make_shared<ZLMModel>(mHostFiles);
}

void ZLMModel::LoadReference(ZLMModel& model, const std::u16string& kuid, AssetLoad& load)
{
    std::u16string path = FindConfigFile(kuid, load);
    if (!load.AdmitModel() || (!path.empty() && load.IsOpen(mFSO->FileIdentity(path))))
        path.clear();
    model.Load(path, load);
}

std::u16string ZLMModel::FindConfigFile(const std::u16string& kuid, AssetLoad& load)
{
    // Relative to the working folder, not to this model's.
    std::u16string candidate = mFSO->WorkingFolder(mPath) + u"..\\" + KuidFolderName(kuid) + u"\\config.txt";
    if (FileExists(candidate, load))
        return candidate;
    const auto start = StartFolder(mFSO->GetFolder(mPath));
    // A host's own service may have changed since the last search.
    return mHostFiles ? ReferenceSearch(*start, load.Budget(), nullptr).Find(kuid)
                      : load.SearchFrom(*start).Find(kuid);
}

} // namespace ZLMIM
