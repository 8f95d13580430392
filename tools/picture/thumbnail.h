#pragma once

#include <string>

namespace ZLMIM::Picture
{

/// The bytes of a PNG file with a picture of an asset, or of the part that loads; empty if there is nothing
/// to draw. `config` is a name in the object model's form.
[[nodiscard]] std::string Thumbnail(const std::u16string& config, int width, int height);

} // namespace ZLMIM::Picture
