#include "zlmim/config/asset_load.h"
#include "zlmim/config/reference_search.h"
#include "zlmim/config/zlm_model.h"

#include <memory>

namespace ZLMIM
{

void ZLMModel::AddBogey(const std::u16string& value, const std::u16string& key, AssetLoad& load)
{
    // The name first, and always: a failure below leaves the names one ahead of the models.
    load.CountReferenceKey();
    BogieNames->Add(key);
    load.Spend(Bogies->Count());
    for (const auto& bogey : Bogies->Entries())
    {
        if (bogey->kuid() == value)
        {
            Bogies->Add(bogey);
            return;
        }
    }
    const auto bogey = std::make_shared<ZLMModel>(mMakeFileSystem);
    LoadReference(*bogey, value, load);
    Bogies->Add(bogey);
}

void ZLMModel::LoadReference(ZLMModel& model, const std::u16string& kuid, AssetLoad& load)
{
    std::u16string path;
    if (load.AdmitModel())
        path = FindConfigFile(kuid, load);
    if (!path.empty() && !load.AdmitFile(mFSO->FileIdentity(path)))
        path.clear();
    model.Load(path, load);
}

std::u16string ZLMModel::FindConfigFile(const std::u16string& kuid, AssetLoad& load)
{
    // Relative to the working folder, not to this model's.
    std::u16string candidate = mFSO->WorkingFolder() + u"..\\" + KuidFolderName(kuid) + u"\\config.txt";
    if (mFSO->FileExists(candidate))
        return candidate;
    const auto start = StartFolder(mFSO->GetFolder(mPath));
    // A host's own service may tell one search from another, and may not outlive this model.
    return mMakeFileSystem ? ReferenceSearch(*start).Find(kuid, *mFSO, load)
                           : load.SearchFrom(*start).Find(kuid, *mFSO, load);
}

} // namespace ZLMIM
