#include "zlmim/config/zlm_model.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/mesh_table.h"
#include "zlmim/model/text.h"

#include <utility>

namespace ZLMIM
{

ZLMModel::ZLMModel() : ZLMModel(FileSystemMaker()) {}

ZLMModel::ZLMModel(FileSystemMaker makeFileSystem) : mMakeFileSystem(std::move(makeFileSystem))
{
    ResetModel(std::make_shared<PathResolver>());
}

ZLMModel::~ZLMModel() = default;

std::shared_ptr<Collection<MeshEntry>> ZLMModel::MeshTable() const
{
    return mOwnTable->List().Group().Share(mMeshTable);
}

void ZLMModel::SetMeshTable(std::shared_ptr<Collection<MeshEntry>> meshTable)
{
    mMeshTable = mOwnTable->List().Group().Store(std::move(meshTable));
}

void ZLMModel::SetKuid(const std::u16string& kuid) { mKuid = LowerCase(Trim(kuid)); }

void ZLMModel::Load(const std::u16string& ConfigFileName)
{
    AssetLoad load;
    Load(std::u16string(ConfigFileName), load); // a copy: the name may be a property that is reset
}

void ZLMModel::Load(const std::u16string& configFileName, AssetLoad& load)
{
    const std::size_t backslash = configFileName.rfind(u'\\');
    mPath = backslash == std::u16string::npos ? std::u16string() : configFileName.substr(0, backslash + 1);
    ResetModel(load.SharedPaths());
    if (!mFSO->FileExists(configFileName))
        return;
    const AssetLoad::Link link(load, mFSO->FileIdentity(configFileName));
    const auto stream = load.Counted(mFSO->OpenTextFile(configFileName));
    ParseConfig(*stream, load);
    if (mOwnTable->List().Count() == 0 && !AssetFileName.empty())
    {
        const std::u16string meshFile = mPath + AssetFileName + u".im";
        if (mFSO->FileExists(meshFile))
            LoadEntry(u"default", meshFile, {}, {}, {}, load);
    }
    stream->Close();
}

void ZLMModel::ResetModel(const std::shared_ptr<PathResolver>& paths)
{
    auto table = ZLMIM::MeshTable::Make(weak_from_this());
    auto bogies = std::make_shared<Collection<ZLMModel>>();
    auto bogieNames = std::make_shared<Collection<std::u16string>>();
    mOwnTable = std::move(table);
    mMeshTable = Membership::Uncounted(mOwnTable->List());
    Bogies = std::move(bogies);
    BogieNames = std::move(bogieNames);
    mFSO = mMakeFileSystem ? mMakeFileSystem() : std::make_shared<DiskFileSystem>(paths);
    AssetFileName.clear();
    Author.clear();
    UserName.clear();
    Kind.clear();
    Description.clear();
    ZLMBuild.clear();
    Pantograph.reset();
    mKuid.clear();
    mHasFolderAnim.reset();
}

void ZLMModel::ParseConfig(TextStream& stream, AssetLoad& load)
{
    std::u16string key;
    std::u16string value;
    while (!stream.AtEndOfStream())
    {
        ReadConfigLine(stream, key, value);
        ParseKey(key, value, stream, load);
    }
}

void ZLMModel::ParseKey(const std::u16string& key, const std::u16string& value, TextStream& stream,
                        AssetLoad& load)
{
    if (key == u"username")
        UserName = value;
    else if (key == u"author")
        Author = value;
    else if (key == u"asset-filename")
        AssetFileName = value;
    else if (key == u"kind")
        Kind = value;
    else if (key == u"description")
        Description = value;
    else if (key == u"zelmar-build")
        ZLMBuild = value;
    else if (key == u"kuid")
        SetKuid(value);
    else if (key == u"pantograph")
    {
        Pantograph = std::make_shared<ZLMModel>(mMakeFileSystem);
        LoadReference(*Pantograph, value, load);
    }
    else if (key.starts_with(u"bogey"))
        AddBogey(value, key, load);
    else if (key == u"mesh-table")
        ParseMeshTable(stream, load);
}

} // namespace ZLMIM
