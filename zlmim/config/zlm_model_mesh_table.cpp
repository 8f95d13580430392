#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/mesh_table.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/native_path.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace ZLMIM
{
namespace
{

/// What asking for a file that may not be there counts for: letter case makes it costly.
constexpr std::int64_t kCostOfAQuestion = 4'096;

/// Passes over the block of an `effects` line, whose value is given. False if the stream ended first: the
/// line that it ended with doesn't count.
bool SkipEffects(TextStream& stream, const std::u16string& effectsValue)
{
    std::u16string key;
    std::u16string value;
    // The next line's brace is the block's own, if the `effects` line has none. Empty lines don't count.
    bool mayBeOwnBrace = effectsValue != u"{";
    for (std::int64_t depth = 1; depth > 0;)
    {
        ReadConfigLine(stream, key, value);
        if (stream.AtEndOfStream())
            return false;
        if (key.empty() && value.empty())
            continue;
        const bool isLoneBrace = key == u"{" && value.empty();
        if (key == u"}")
            --depth;
        else if (value == u"{" || (isLoneBrace && !mayBeOwnBrace))
            ++depth;
        mayBeOwnBrace = false;
    }
    return true;
}

} // namespace

void ZLMModel::ParseMeshTable(TextStream& stream, AssetLoad& load)
{
    std::u16string key;
    std::u16string value;
    // Of the entry that is open; none is while its name is empty.
    std::u16string name;
    std::u16string meshFile;
    std::u16string animFile;
    std::u16string attParent;
    std::u16string att;

    while (!stream.AtEndOfStream())
    {
        ReadConfigLine(stream, key, value);
        if (name.empty())
        {
            if (key == u"}")
                return;
            // A table may have its braces on lines of their own.
            const bool isLoneBrace = key == u"{" && value.empty();
            if (!isLoneBrace)
                name = key;
        }
        else if (key == u"anim")
            animFile = value;
        else if (key == u"att-parent")
            attParent = value;
        else if (key == u"mesh")
            meshFile = MeshPath(value, load);
        else if (key == u"att")
            att = value;
        else if (key == u"effects")
        {
            if (!SkipEffects(stream, value))
                return;
        }
        else if (key == u"}")
        {
            LoadEntry(std::exchange(name, {}), std::exchange(meshFile, {}), std::exchange(animFile, {}),
                      std::exchange(attParent, {}), std::exchange(att, {}), load);
        }
    }
}

void ZLMModel::LoadEntry(const std::u16string& name, const std::u16string& meshFile, std::u16string animFile,
                         std::u16string attParent, std::u16string att, AssetLoad& load)
{
    load.CountMeshEntry();
    load.Spend(kCostOfAQuestion);
    MeshEntry& entry = mOwnTable->MakeEntry();
    if (!animFile.empty() && !IsAbsoluteName(animFile))
        animFile.insert(0, mFSO->WorkingFolder());
    const std::u16string folderAnim = mPath + u"anim.kin";
    if (!mHasFolderAnim || mMakeFileSystem)
        mHasFolderAnim = mFSO->FileExists(folderAnim);
    if (*mHasFolderAnim && animFile.empty())
        animFile = folderAnim;
    entry.Load(shared_from_this(), name, meshFile, animFile, attParent, att, load);
    load.SpendOn(*entry.Mesh, meshFile);
    load.SpendOn(*entry.anim, animFile);
}

std::u16string ZLMModel::MeshPath(const std::u16string& value, AssetLoad& load)
{
    std::u16string path = mPath + value;
    std::replace(path.begin() + static_cast<std::ptrdiff_t>(mPath.size()), path.end(), u'/', u'\\');
    path = LowerCase(path);
    if (!path.ends_with(u".lm"))
        return path;
    const std::u16string listFile = path + u".txt";
    load.Spend(kCostOfAQuestion);
    if (load.IsSpent() || !mFSO->FileExists(listFile))
        return path;
    const std::size_t backslash = path.rfind(u'\\');
    const std::size_t folderSize = backslash == std::u16string::npos ? 0 : backslash + 1;
    return path.substr(0, folderSize) + ResolveLodMesh(listFile, load);
}

} // namespace ZLMIM
