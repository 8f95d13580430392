#include "repairs.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"

#include <cstdint>

namespace ZLMIM::Export
{

void Repairs::Add(const std::u16string& file, const std::string& what, std::size_t chunk)
{
    constexpr std::size_t kMostChunks = 5;
    Places& places = mPlaces[{file, what}];
    ++places.Count;
    const bool isNew = places.Chunks.empty() || places.Chunks.back() != chunk;
    if (chunk > 0 && isNew && places.Chunks.size() < kMostChunks)
        places.Chunks.push_back(chunk);
}

std::vector<std::string> Repairs::Lines() const
{
    std::vector<std::string> lines;
    for (const auto& [key, places] : mPlaces)
    {
        const auto& [file, what] = key;
        std::string line = file.empty() ? "" : Tools::ShownFile(file) + ": ";
        for (std::size_t i = 0; i < places.Chunks.size(); ++i)
            line += (i > 0              ? ", "
                     : places.Count > 1 ? "chunks "
                                        : "chunk ") +
                    std::to_string(places.Chunks[i]);
        if (!places.Chunks.empty())
            line += (places.Count > places.Chunks.size()
                         ? " and " +
                               Tools::Number(static_cast<std::int64_t>(places.Count - places.Chunks.size())) +
                               " more: "
                         : ": ");
        lines.push_back(line + what);
    }
    return lines;
}

} // namespace ZLMIM::Export
