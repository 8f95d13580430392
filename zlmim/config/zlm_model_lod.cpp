#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/line_reader.h"
#include "zlmim/config/lod_number.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace ZLMIM
{
namespace
{

/// The text after `marker` on the next line that contains it, in lower case, without quotation marks and
/// `dropped` characters; `std::nullopt` at the end of the file.
std::optional<std::u16string> NextAfter(LineReader& lines, std::u16string_view marker, char16_t dropped)
{
    while (!lines.AtEndOfStream())
    {
        std::u16string line = lines.ReadLine();
        MakeLowerCase(line);
        const std::size_t start = line.find(marker);
        if (start == std::u16string::npos)
            continue;
        line.erase(0, start + marker.size());
        std::erase_if(line, [dropped](char16_t c) { return c == u'"' || c == dropped; });
        return line;
    }
    return std::nullopt;
}

/// The name of the mesh in the first name line after the first level line of level 1; empty if there is no
/// such line.
std::u16string Level1Mesh(LineReader& lines)
{
    std::optional<std::u16string> level;
    do
    {
        level = NextAfter(lines, u"mesh(", u')');
        if (!level)
            return {};
    } while (LodNumber(*level) != 1.0);
    const auto name = NextAfter(lines, u"name=", u';');
    return name ? std::u16string(Trim(*name)) : std::u16string();
}

} // namespace

std::u16string ZLMModel::ResolveLodMesh(const std::u16string& listFile, AssetLoad& load)
{
    const auto stream = mFSO->OpenTextFile(listFile);
    LineReader lines(*stream, load.Budget());
    std::u16string name = NameFileInErrors(listFile, [&] { return Level1Mesh(lines); });
    stream->Close();
    return name;
}

} // namespace ZLMIM
