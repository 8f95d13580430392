#pragma once

#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Tools
{

/// The picture files for a texture, the likeliest first: those in the mesh's folder that are called like the
/// texture, apart from the ending and letter case. Without such a file, the picture that the texture's
/// description (`.texture.txt`) names, or else the description or the compiled texture (`.texture`) itself.
/// `meshFolder` ends with a separator. Both it and the result are in the system's form.
[[nodiscard]] std::vector<NativePath> TextureFiles(const NativePath& meshFolder, std::u16string_view texture,
                                                   PathResolver& names);

/// Describes damage to a picture file, such as "is cut short". Empty if no damage is found or the kind of
/// file is unknown. The pixels aren't decoded.
[[nodiscard]] std::string PictureDamage(const NativePath& file);

} // namespace ZLMIM::Tools
