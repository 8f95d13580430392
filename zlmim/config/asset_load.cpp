#include "zlmim/config/asset_load.h"

#include "zlmim/anim/anim.h"
#include "zlmim/config/memory_use.h"
#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"

#include <algorithm>

namespace ZLMIM
{
namespace
{

/// How much of what a file's content takes the file accounts for, when it is read for the first time: a bone
/// of 48 bytes, say, becomes an object of six times as many.
constexpr std::int64_t kMemoryPerByte = 8;

/// A mesh or an animation that takes less is spent like one that has been read before, without looking
/// whether it has, until that has come to so much.
constexpr std::int64_t kWorthALook = 262'144;
constexpr std::int64_t kMostUnseen = std::int64_t{64} * 1'048'576;

/// Reading a file again costs its time, which counts as an eighth of its size.
constexpr std::int64_t kSizePerReading = 8;

class SpendingStream : public TextStream
{
public:
    SpendingStream(std::unique_ptr<TextStream> stream, AssetLoad& load)
        : mStream(std::move(stream)), mLoad(load)
    {
    }

    [[nodiscard]] bool AtEndOfStream() override { return mStream->AtEndOfStream(); }
    [[nodiscard]] std::u16string ReadLine() override
    {
        std::u16string line = mStream->ReadLine();
        mLoad.Spend(static_cast<std::int64_t>((line.size() + 2) * sizeof(char16_t)));
        return line;
    }
    void Close() override { mStream->Close(); }

private:
    std::unique_ptr<TextStream> mStream;
    AssetLoad& mLoad;
};

void Count(std::int32_t& count, std::int32_t most, const char* what)
{
    if (count == most)
        throw BoundsError("more than " + std::to_string(most) + " " + what, most);
    ++count;
}

} // namespace

AssetLoad::Link::Link(AssetLoad& load, std::u16string fileIdentity) : mLoad(load)
{
    mLoad.mIsFirstReading = mLoad.mFilesRead.insert(fileIdentity).second;
    mLoad.mFiles.push_back(std::move(fileIdentity));
}

AssetLoad::Link::~Link() { mLoad.mFiles.pop_back(); }

bool AssetLoad::AdmitModel()
{
    if (mModels >= kMaxModels || IsSpent())
        return false;
    ++mModels;
    return mFiles.size() < kMaxModelDepth;
}

bool AssetLoad::AdmitFile(const std::u16string& fileIdentity) const
{
    return std::find(mFiles.begin(), mFiles.end(), fileIdentity) == mFiles.end();
}

void AssetLoad::CountMeshEntry() { Count(mMeshEntries, kMaxMeshEntries, "entries in mesh tables"); }

void AssetLoad::CountReferenceKey() { Count(mReferenceKeys, kMaxReferenceKeys, "references"); }

void AssetLoad::SpendOn(const Mesh& mesh, std::u16string_view name)
{
    SpendOn(MemoryUse(mesh), mesh.FileSize, name);
}

void AssetLoad::SpendOn(const Anim& anim, std::u16string_view name)
{
    SpendOn(MemoryUse(anim), anim.FileSize, name);
}

void AssetLoad::SpendOn(std::int64_t memory, std::int64_t fileSize, std::u16string_view name)
{
    const std::int64_t again = memory + fileSize / kSizePerReading;
    if (again < kWorthALook && mSpentUnseen + again <= kMostUnseen)
    {
        mSpentUnseen += again;
        Spend(again);
        return;
    }
    const FoundFile* const found = mPaths->Find(name);
    const bool isFirstReading = found && mBinaryFilesRead.insert(found->identity).second;
    Spend(isFirstReading ? std::max<std::int64_t>(0, memory - kMemoryPerByte * fileSize) : again);
}

std::unique_ptr<TextStream> AssetLoad::Counted(std::unique_ptr<TextStream> stream)
{
    return mIsFirstReading ? std::move(stream) : Spending(std::move(stream));
}

std::unique_ptr<TextStream> AssetLoad::Spending(std::unique_ptr<TextStream> stream)
{
    return std::make_unique<SpendingStream>(std::move(stream), *this);
}

ReferenceSearch& AssetLoad::SearchFrom(const Folder& start)
{
    std::u16string path = start.Path();
    if (const auto known = mSearches.find(path); known != mSearches.end())
        return known->second;
    return mSearches.emplace(std::move(path), ReferenceSearch(start)).first->second;
}

} // namespace ZLMIM
