#include "config_keys.h"

#include "zlmim/model/errors.h"

#include <algorithm>
#include <utility>

namespace ZLMIM::Validate
{
namespace
{

class KeyReader : public MeshTableParser
{
public:
    explicit KeyReader(TextStream& stream) : mLines(stream, mBudget) {}

    ConfigKeys Read()
    {
        ConfigLine line;
        try
        {
            while (!mLines.AtEndOfStream())
            {
                ReadConfigLine(mLines, line);
                if (line.Key == u"mesh-table")
                    Parse(mLines);
                else if (line.Key == u"pantograph" || line.Key.starts_with(u"bogey"))
                    mKeys.References.push_back(line);
                else if (line.Key == u"asset-filename")
                    mKeys.AssetFileName = line;
            }
        }
        catch (const FileSystemError& error)
        {
            // The model's load fails there as well.
            const bool hasBegun = mLines.LineCount() >= mLines.FirstLine();
            mKeys.ErrorLine = std::min(mLines.FirstLine(), mLines.LineCount());
            if (error.Number() != FileSystemError::Code::PastEnd)
                mKeys.Error = "it can't be read";
            else if (hasBegun)
                mKeys.Error = "its quotation mark is never closed";
            else
                mKeys.Error = "its block doesn't begin before the file ends";
        }
        return std::move(mKeys);
    }

private:
    void OnEntry(MeshTableKeys& keys) override { mKeys.Entries.push_back(keys); }
    void OnOpenEntry(MeshTableKeys& keys) override { mKeys.OpenEntry = keys; }

    LoadBudget mBudget;
    LineReader mLines;
    ConfigKeys mKeys;
};

} // namespace

ConfigKeys ReadConfigKeys(TextStream& stream) { return KeyReader(stream).Read(); }

} // namespace ZLMIM::Validate
