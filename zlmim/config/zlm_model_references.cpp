#include "zlmim/config/config_line.h"
#include "zlmim/config/load_chain.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <memory>

namespace ZLMIM
{
namespace
{

/// The name that the folder of an asset may bear, by its kuid.
std::u16string FolderName(const std::u16string& kuid)
{
    std::u16string name = LowerCase(kuid);
    std::replace(name.begin(), name.end(), u':', u' ');
    std::erase_if(name, [](char16_t c) { return c == u'<' || c == u'>'; });
    return name;
}

/// Where the walk for an asset starts: two levels above the folder that refers to it, or at the root where
/// that comes first.
std::shared_ptr<Folder> StartFolder(std::shared_ptr<Folder> folder)
{
    for (int level = 0; level < 2 && !folder->IsRootFolder(); ++level)
        folder = folder->ParentFolder();
    return folder;
}

} // namespace

void ZLMModel::AddBogey(const std::u16string& value, const std::u16string& key, LoadChain& chain)
{
    // First, and always: a failure below leaves the names one ahead of the models.
    BogieNames->Add(key);
    for (const auto& bogey : Bogies->Entries())
    {
        if (bogey->kuid() == value)
        {
            Bogies->Add(bogey);
            return;
        }
    }
    const auto bogey = std::make_shared<ZLMModel>(mMakeFileSystem);
    LoadReference(*bogey, value, chain);
    Bogies->Add(bogey);
}

void ZLMModel::LoadReference(ZLMModel& model, const std::u16string& kuid, LoadChain& chain)
{
    const std::u16string path = FindConfigFile(kuid);
    const bool isAdmitted = chain.Admit(mFSO->FileIdentity(path));
    model.Load(isAdmitted ? path : std::u16string(), chain);
}

std::u16string ZLMModel::FindConfigFile(const std::u16string& kuid)
{
    // Relative to the working folder, not to this model's.
    std::u16string candidate = u"..\\" + FolderName(kuid) + u"\\config.txt";
    if (mFSO->FileExists(candidate))
        return candidate;

    const auto matches = [&](const Folder& folder, std::u16string& path)
    {
        path = folder.Path() + u"\\config.txt";
        return mFSO->FileExists(path) && ConfigHasValue(u"kuid", kuid, path);
    };
    std::u16string path;
    for (const auto& folder : StartFolder(mFSO->GetFolder(mPath))->SubFolders())
    {
        if (matches(*folder, path))
            return path;
        for (const auto& subFolder : folder->SubFolders())
        {
            if (matches(*subFolder, path))
                return path;
        }
    }
    return {};
}

bool ZLMModel::ConfigHasValue(const std::u16string& key, const std::u16string& value,
                              const std::u16string& path)
{
    const auto stream = mFSO->OpenTextFile(path);
    std::u16string lineKey;
    std::u16string lineValue;
    while (!stream->AtEndOfStream())
    {
        ReadConfigLine(*stream, lineKey, lineValue);
        // The first such line decides.
        if (lineKey == key)
            return LowerCase(lineValue) == value;
    }
    return false;
}

} // namespace ZLMIM
