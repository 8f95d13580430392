#include "config_keys.h"

#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/model/errors.h"

#include <algorithm>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

class CountingStream : public TextStream
{
public:
    explicit CountingStream(TextStream& stream) : mStream(stream) {}

    [[nodiscard]] std::int64_t Lines() const noexcept { return mLines; }

    [[nodiscard]] bool AtEndOfStream() override { return mStream.AtEndOfStream(); }
    [[nodiscard]] std::u16string ReadLine() override
    {
        std::u16string line = mStream.ReadLine();
        ++mLines;
        return line;
    }
    void Close() override { mStream.Close(); }

private:
    TextStream& mStream;
    std::int64_t mLines = 0;
};

template <class Item>
void AddAtMost(std::vector<Item>& items, Item item, std::int32_t most, const char* what)
{
    if (std::ssize(items) == most)
        throw BoundsError("more than " + std::to_string(most) + " " + what, most);
    items.push_back(std::move(item));
}

class KeyReader
{
public:
    explicit KeyReader(TextStream& stream) : mStream(stream) {}

    ConfigKeys Read()
    {
        try
        {
            while (!mStream.AtEndOfStream())
            {
                ReadKey();
                if (mKey.Key == u"mesh-table")
                    ReadMeshTable();
                else if (mKey.Key == u"pantograph" || mKey.Key.starts_with(u"bogey"))
                    AddAtMost(mKeys.References, mKey, kMaxReferenceKeys, "references");
                else if (mKey.Key == u"asset-filename")
                    mKeys.AssetFileName = mKey;
            }
        }
        catch (const FileSystemError& error)
        {
            // The model's load fails there as well.
            const bool hasBegun = mStream.Lines() >= mKey.FirstLine;
            mKeys.TroubleLine = std::min(mKey.FirstLine, mStream.Lines());
            if (error.Number() != FileSystemError::Code::PastEnd)
                mKeys.Trouble = "it can't be read";
            else if (hasBegun)
                mKeys.Trouble = "its quotation mark is never closed";
            else
                mKeys.Trouble = "its block doesn't begin before the file ends";
        }
        return std::move(mKeys);
    }

private:
    void ReadKey()
    {
        mKey.FirstLine = mStream.Lines() + 1;
        ReadConfigLine(mStream, mKey.Key, mKey.Value);
        mKey.LastLine = mStream.Lines();
    }

    [[nodiscard]] bool IsLoneBrace() const { return mKey.Key == u"{" && mKey.Value.empty(); }

    void ReadMeshTable()
    {
        std::optional<EntryKeys> entry;
        while (!mStream.AtEndOfStream())
        {
            ReadKey();
            if (!entry)
            {
                if (mKey.Key == u"}")
                    return;
                if (!mKey.Key.empty() && !IsLoneBrace())
                    entry = EntryKeys{mKey.Key, mKey.FirstLine, {}, {}, {}, {}};
            }
            else if (mKey.Key == u"}")
            {
                AddAtMost(mKeys.Entries, *std::exchange(entry, std::nullopt), kMaxMeshEntries,
                          "mesh entries");
            }
            else if (mKey.Key == u"effects")
            {
                if (!SkipEffects())
                    break;
            }
            else if (ConfigKey* const key = EntryKey(*entry))
            {
                *key = mKey;
            }
        }
        mKeys.OpenEntry = std::move(entry);
    }

    [[nodiscard]] ConfigKey* EntryKey(EntryKeys& entry) const
    {
        if (mKey.Key == u"mesh")
            return &entry.Mesh;
        if (mKey.Key == u"anim")
            return &entry.Anim;
        if (mKey.Key == u"att-parent")
            return &entry.AttParent;
        return mKey.Key == u"att" ? &entry.Att : nullptr;
    }

    /// False if the file ends inside.
    bool SkipEffects()
    {
        bool mayBeOwnBrace = mKey.Value != u"{";
        for (std::int64_t depth = 1; depth > 0;)
        {
            ReadKey();
            if (mStream.AtEndOfStream())
                return false;
            if (mKey.Key.empty() && mKey.Value.empty())
                continue;
            if (mKey.Key == u"}")
                --depth;
            else if (mKey.Value == u"{" || (IsLoneBrace() && !mayBeOwnBrace))
                ++depth;
            mayBeOwnBrace = false;
        }
        return true;
    }

    CountingStream mStream;
    ConfigKey mKey;
    ConfigKeys mKeys;
};

} // namespace

ConfigKeys ReadConfigKeys(TextStream& stream) { return KeyReader(stream).Read(); }

} // namespace ZLMIM::Validate
