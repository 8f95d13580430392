#pragma once

#include <ostream>
#include <string_view>

namespace ZLMIM::View
{

/// Writes an HTML page that needs no other file. `data` is JSON, see `PageData`; `model` is a glTF file with
/// everything in it, whose nodes are named as `NumberNodes` does.
void WritePage(std::string_view data, std::string_view model, std::ostream& out);

} // namespace ZLMIM::View
