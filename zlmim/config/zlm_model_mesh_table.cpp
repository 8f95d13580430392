#include "zlmim/config/asset_load.h"
#include "zlmim/config/lod_list.h"
#include "zlmim/config/mesh_table.h"
#include "zlmim/config/mesh_table_parser.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/native_path.h"

#include <algorithm>
#include <cstddef>

namespace ZLMIM
{

/// Loads the entries of a mesh table as they are parsed.
class ZLMModel::MeshTableReader : public MeshTableParser
{
public:
    MeshTableReader(ZLMModel& model, AssetLoad& load) : mModel(model), mLoad(load) {}

protected:
    void OnKey(MeshTableKeys& keys, const ConfigLine& line) override
    {
        if (line.Key == u"mesh")
            keys.Mesh.Value = mModel.MeshPath(line.Value, mLoad);
    }
    void OnEntry(MeshTableKeys& keys) override { mModel.LoadEntry(keys, mLoad); }

private:
    ZLMModel& mModel;
    AssetLoad& mLoad;
};

void ZLMModel::ParseMeshTable(LineReader& lines, AssetLoad& load)
{
    MeshTableReader(*this, load).Parse(lines);
}

void ZLMModel::LoadEntry(const MeshTableKeys& keys, AssetLoad& load)
{
    const auto table = mOwnTable; // kept, since a host's service may reload the model
    load.Budget().ChargeObjects<MeshEntry, Mesh, Anim>();
    MeshEntry& entry = table->MakeEntry();
    const std::u16string folderAnim = mPath + u"anim.kin";
    if (!mHasFolderAnim || mHostFiles)
        mHasFolderAnim = FileExists(folderAnim, load);
    std::u16string anim = keys.Anim.Value;
    if (anim.empty())
        anim = *mHasFolderAnim ? folderAnim : u"";
    else if (!IsAbsoluteName(anim))
        anim.insert(0, mFSO->WorkingFolder(mPath));
    std::u16string attParent = keys.AttParent.Value;
    std::u16string att = keys.Att.Value;
    entry.Load(shared_from_this(), keys.Name.Key, keys.Mesh.Value, anim, attParent, att, load);
}

std::u16string ZLMModel::MeshPath(const std::u16string& value, AssetLoad& load)
{
    std::u16string path = mPath + value;
    std::replace(path.begin() + static_cast<std::ptrdiff_t>(mPath.size()), path.end(), u'/', u'\\');
    MakeLowerCase(path);
    if (!path.ends_with(u".lm"))
        return path;
    const std::u16string listFile = path + u".txt";
    if (!FileExists(listFile, load))
        return path;
    path.resize(path.rfind(u'\\') + 1); // npos + 1 is 0
    return path + ResolveLodMesh(listFile, load);
}

std::u16string ZLMModel::ResolveLodMesh(const std::u16string& listFile, AssetLoad& load)
{
    const auto stream = mFSO->OpenTextFile(listFile);
    LineReader lines(*stream, load.Budget());
    std::u16string name = NameFileInErrors(listFile, [&] { return Level1Mesh(lines); });
    stream->Close();
    return name;
}

} // namespace ZLMIM
