#include "zlmim/config/asset_load.h"
#include "zlmim/config/config_line.h"
#include "zlmim/config/lod_number.h"
#include "zlmim/config/zlm_model.h"
#include "zlmim/model/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace ZLMIM
{
namespace
{

/// What stands behind `marker` on the next line, in lower case, that has it, without the two dropped
/// characters; none at the end of the stream.
std::optional<std::u16string> NextBehind(TextStream& stream, std::u16string_view marker, char16_t dropped)
{
    while (!stream.AtEndOfStream())
    {
        const std::u16string line = LowerCase(stream.ReadLine());
        const std::size_t start = line.find(marker);
        if (start == std::u16string::npos)
            continue;
        std::u16string rest = line.substr(start + marker.size());
        std::erase_if(rest, [dropped](char16_t c) { return c == u'"' || c == dropped; });
        return rest;
    }
    return std::nullopt;
}

/// The name of the mesh in the first name line behind the first level line of level 1; empty without one.
std::u16string Level1Mesh(TextStream& stream)
{
    std::optional<std::u16string> level;
    do
    {
        level = NextBehind(stream, u"mesh(", u')');
        if (!level)
            return {};
    } while (LodNumber(*level) != 1.0);
    const auto name = NextBehind(stream, u"name=", u';');
    return name ? std::u16string(Trim(*name)) : std::u16string();
}

} // namespace

std::u16string ZLMModel::ResolveLodMesh(const std::u16string& listFile, AssetLoad& load)
{
    const auto stream = load.Spending(mFSO->OpenTextFile(listFile));
    std::u16string name = Level1Mesh(*stream);
    stream->Close();
    return name;
}

} // namespace ZLMIM
