#include "zlmim/config/zlm_model.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/disk_file_system.h"
#include "zlmim/config/mesh_table.h"
#include "zlmim/config/mesh_table_parser.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace ZLMIM
{
namespace
{

/// A key whose value is stored as it is.
using TextKey = std::pair<std::u16string_view, std::u16string ZLMModel::*>;
constexpr std::array<TextKey, 6> kTextKeys = {{
    {u"username", &ZLMModel::UserName},
    {u"author", &ZLMModel::Author},
    {u"asset-filename", &ZLMModel::AssetFileName},
    {u"kind", &ZLMModel::Kind},
    {u"description", &ZLMModel::Description},
    {u"zelmar-build", &ZLMModel::ZLMBuild},
}};

} // namespace

ZLMModel::ZLMModel(std::shared_ptr<FileSystem> files) : mHostFiles(std::move(files))
{
    ResetModel(std::make_shared<PathResolver>());
}

ZLMModel::~ZLMModel()
{
    // Fixed order: the destructors of a host's objects may observe it.
    mMeshTable.reset();
    mOwnTable.reset();
    Bogies.reset();
    BogieNames.reset();
    Pantograph.reset();
    mFSO.reset();
}

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
    const auto self = weak_from_this().lock(); // a host's service may release the model during the load
    AssetLoad load(Limits);
    Load(std::u16string(ConfigFileName), load); // a copy, since the name may be a property that is reset
}

void ZLMModel::Load(const std::u16string& configFileName, AssetLoad& load)
{
    NameFileInErrors(configFileName, [&] { LoadConfig(configFileName, load); });
}

void ZLMModel::LoadConfig(const std::u16string& configFileName, AssetLoad& load)
{
    mPath = configFileName.substr(0, configFileName.rfind(u'\\') + 1); // npos + 1 is 0
    ResetModel(load.Paths());
    if (!FileExists(configFileName, load))
        return;
    const AssetLoad::OpenFileScope scope(load, mFSO->FileIdentity(configFileName));
    const auto stream = mFSO->OpenTextFile(configFileName);
    LineReader lines(*stream, load.Budget());
    ParseConfig(lines, load);
    if (mOwnTable->List().Count() == 0 && !AssetFileName.empty())
    {
        MeshTableKeys fallback;
        fallback.Name.Key = u"default";
        fallback.Mesh.Value = mPath + AssetFileName + u".im";
        if (FileExists(fallback.Mesh.Value, load))
            LoadEntry(fallback, load);
    }
    stream->Close();
}

void ZLMModel::ParseConfig(LineReader& lines, AssetLoad& load)
{
    for (ConfigLine line; !lines.AtEndOfStream();)
    {
        ReadConfigLine(lines, line);
        ParseKey(line, lines, load);
    }
}

void ZLMModel::ResetModel(const std::shared_ptr<PathResolver>& paths)
{
    auto table = ZLMIM::MeshTable::Make(weak_from_this());
    auto bogies = std::make_shared<Collection<ZLMModel>>();
    auto bogieNames = std::make_shared<Collection<std::u16string>>();
    mMeshTable = Membership::Uncounted(table->List());
    mOwnTable = std::move(table);
    Bogies = std::move(bogies);
    BogieNames = std::move(bogieNames);
    mFSO = mHostFiles ? mHostFiles : std::make_shared<DiskFileSystem>(paths);
    for (const TextKey& key : kTextKeys)
        (this->*key.second).clear();
    Pantograph.reset();
    mKuid.clear();
    mHasFolderAnim.reset();
}

void ZLMModel::ParseKey(ConfigLine& line, LineReader& lines, AssetLoad& load)
{
    const auto text = std::find_if(kTextKeys.begin(), kTextKeys.end(),
                                   [&](const TextKey& candidate) { return candidate.first == line.Key; });
    if (text != kTextKeys.end())
    {
        load.Budget().ChargeText(line.Value);
        this->*text->second = std::move(line.Value);
    }
    else if (line.Key == u"kuid")
    {
        load.Budget().ChargeText(line.Value);
        SetKuid(line.Value);
    }
    else if (line.Key == u"pantograph")
    {
        const auto pantograph = MakeReferredModel(load);
        Pantograph = pantograph; // a host's service may write the property during the load
        LoadReference(*pantograph, line.Value, load);
    }
    else if (line.Key.starts_with(u"bogey"))
        AddBogey(line.Value, line.Key, load);
    else if (line.Key == u"mesh-table")
        ParseMeshTable(lines, load);
}

bool ZLMModel::FileExists(const std::u16string& path, AssetLoad& load)
{
    load.Budget().ChargeWork(LoadCost::FileQuestion);
    return mFSO->FileExists(path);
}

} // namespace ZLMIM
