#include "lone_asset.h"

#include "located_file.h"

#include "zlmim/config/disk_file_system.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

namespace ZLMIM::Validate
{
namespace
{

/// Lines of a file in whose place the model reads one other, and then empty ones.
struct OtherLines
{
    std::int64_t First;
    std::int64_t Last;
    std::u16string Text;
};

class EditedStream : public TextStream
{
public:
    EditedStream(std::unique_ptr<TextStream> stream, const std::vector<OtherLines>& edits)
        : mStream(std::move(stream)), mEdit(edits.begin()), mEnd(edits.end())
    {
    }

    [[nodiscard]] bool AtEndOfStream() override { return mStream->AtEndOfStream(); }
    [[nodiscard]] std::u16string ReadLine() override
    {
        std::u16string line = mStream->ReadLine();
        ++mLine;
        while (mEdit != mEnd && mEdit->Last < mLine)
            ++mEdit;
        if (mEdit == mEnd || mLine < mEdit->First)
            return line;
        return mLine == mEdit->First ? mEdit->Text : std::u16string();
    }
    void Close() override { mStream->Close(); }

private:
    std::unique_ptr<TextStream> mStream;
    std::vector<OtherLines>::const_iterator mEdit;
    std::vector<OtherLines>::const_iterator mEnd;
    std::int64_t mLine = 0;
};

/// The system's files, but for the lines of one.
class EditedFileSystem : public FileSystem
{
public:
    EditedFileSystem(std::shared_ptr<PathResolver> names, std::u16string config,
                     std::vector<OtherLines> edits)
        : mDisk(std::move(names)), mConfig(std::move(config)), mEdits(std::move(edits))
    {
    }

    [[nodiscard]] bool FileExists(const std::u16string& path) override { return mDisk.FileExists(path); }
    [[nodiscard]] std::unique_ptr<TextStream> OpenTextFile(const std::u16string& path) override
    {
        auto stream = mDisk.OpenTextFile(path);
        return path == mConfig ? std::make_unique<EditedStream>(std::move(stream), mEdits)
                               : std::move(stream);
    }
    [[nodiscard]] std::shared_ptr<Folder> GetFolder(const std::u16string& path) override
    {
        return mDisk.GetFolder(path);
    }
    [[nodiscard]] std::u16string FileIdentity(const std::u16string& path) override
    {
        return mDisk.FileIdentity(path);
    }

private:
    DiskFileSystem mDisk;
    std::u16string mConfig;
    std::vector<OtherLines> mEdits;
};

bool IsRelative(const std::u16string& name)
{
    return !name.starts_with(u'\\') && !ToPath(ToNativePath(name)).is_absolute();
}

std::vector<OtherLines> Edits(const std::u16string& name, const ConfigKeys& keys)
{
    std::vector<OtherLines> edits;
    for (const ConfigLine& reference : keys.References)
        edits.push_back({reference.FirstLine, reference.LastLine, {}});
    for (const MeshTableKeys& entry : keys.Entries)
    {
        const ConfigLine& anim = entry.Anim;
        if (!anim.Value.empty() && IsRelative(anim.Value))
            edits.push_back({anim.FirstLine, anim.LastLine, u"anim " + FolderOf(name) + anim.Value});
    }
    std::sort(edits.begin(), edits.end(), [](const auto& a, const auto& b) { return a.First < b.First; });
    return edits;
}

} // namespace

Examples::Asset LoadLoneAsset(const std::u16string& name, const ConfigKeys& keys,
                              const std::shared_ptr<PathResolver>& names)
{
    std::shared_ptr<FileSystem> files = std::make_shared<EditedFileSystem>(names, name, Edits(name, keys));
    const auto model = std::make_shared<ZLMModel>(std::move(files));
    const auto load = [&]
    {
        model->Load(name);
        return true;
    };
    return {model, Examples::Attempt(load)};
}

} // namespace ZLMIM::Validate
