#include "tools/common/config_keys.h"

#include "zlmim/config/disk_file_system.h"
#include "zlmim/model/errors.h"

#include <cstdint>
#include <utility>

namespace ZLMIM::Tools
{
namespace
{

class EntryReader : public MeshTableParser
{
public:
    explicit EntryReader(std::vector<MeshTableKeys>& entries) : mEntries(entries) {}

protected:
    void OnEntry(MeshTableKeys& keys) override { mEntries.push_back(std::move(keys)); }

private:
    std::vector<MeshTableKeys>& mEntries;
};

void Read(LineReader& lines, ConfigKeys& keys)
{
    ConfigLine line;
    std::int64_t before = 0; // the last line that isn't blank
    while (!lines.AtEndOfStream())
    {
        ReadConfigLine(lines, line);
        keys.HasText = keys.HasText || !line.Key.empty() || !line.Value.empty();
        for (const std::u16string* const text : {&line.Key, &line.Value})
            keys.HasNul = keys.HasNul || text->find(u'\0') != std::u16string::npos;
        if (line.Key == u"mesh-table")
            EntryReader(keys.Entries).Parse(lines);
        else if (line.Key == u"asset-filename")
            keys.AssetFileName = line;
        else if (line.Key == u"pantograph")
            keys.Pantograph = line;
        else if (line.Key.starts_with(u"bogey"))
            keys.Bogeys.push_back(line);
        // The brace of a block on the next line, which isn't blank.
        const bool isBlock =
            line.IsLoneBrace() && !keys.Bogeys.empty() && before == keys.Bogeys.back().LastLine;
        if (isBlock && keys.Bogeys.back().Value.empty())
            keys.Bogeys.back().Value = u"{";
        if (!line.Key.empty())
            before = line.LastLine;
    }
}

} // namespace

ConfigKeys ReadConfigKeys(const std::u16string& config, const std::shared_ptr<PathResolver>& names)
{
    ConfigKeys keys;
    keys.File = config;
    try
    {
        const auto stream = DiskFileSystem(names).OpenTextFile(config);
        LoadBudget budget;
        LineReader lines(*stream, budget);
        Read(lines, keys);
    }
    catch (const FileSystemError&)
    {
        // The model's load has failed in the same place.
    }
    catch (const BoundsError&)
    {
        // Likewise.
    }
    return keys;
}

} // namespace ZLMIM::Tools
