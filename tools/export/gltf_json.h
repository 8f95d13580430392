#pragma once

#include "gltf.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ZLMIM::Export
{

/// The size of a part of the binary buffer with the zeros after it: parts begin at multiples of 4 bytes.
constexpr std::size_t Aligned(std::size_t size) { return (size + 3) / 4 * 4; }

/// Where a `.gltf` has what a `.glb` has inside it: the names of files as URIs.
struct Links
{
    std::string Buffer;
    std::vector<std::string> Images;
};

/// The JSON of a document. `links` is null if the document is one file.
[[nodiscard]] std::string JsonOf(const Document& document, const Links* links);

} // namespace ZLMIM::Export
