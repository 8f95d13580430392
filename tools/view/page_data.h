#pragma once

#include "gltf.h"
#include "validate.h"

#include "tools/common/asset.h"

#include <string>
#include <vector>

namespace ZLMIM::View
{

/// What a page shows besides the model.
struct Subject
{
    const Tools::Asset& Asset;
    /// As people know it.
    std::string Path;
    /// Why it isn't loaded as a whole, and what can't be drawn as it is; printable.
    std::vector<std::string> Problems;
    Validate::Result Findings;
};

/// JSON about an asset that isn't an animation. `document` is its glTF; the JSON has the same nodes in the
/// same order, each with what `zlmim inspect` shows of it.
[[nodiscard]] std::string PageData(const Subject& subject, const Export::Document& document);

/// Names the nodes `n0`, `n1` and so on, and meshes not at all: names from files needn't be unique, and may
/// have any characters, but the page finds nodes by name.
void NumberNodes(Export::Document& document);

} // namespace ZLMIM::View
