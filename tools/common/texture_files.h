#ifndef ZLMIM_TOOLS_COMMON_TEXTURE_FILES_H
#define ZLMIM_TOOLS_COMMON_TEXTURE_FILES_H

#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Tools
{

/// The files for a texture: those in the mesh's folder with the texture's name, apart from the ending and
/// letter case. Excludes meshes and animations. `folder` ends with a separator. Both it and the result are in
/// the system's form.
[[nodiscard]] std::vector<NativePath> TextureFiles(const NativePath& meshFolder, std::u16string_view texture,
                                                   PathResolver& names);

/// Describes damage to a picture file, such as "is cut short". Empty if no damage is found or the kind of
/// file is unknown. Reads only its size and a few bytes.
[[nodiscard]] std::string PictureDamage(const NativePath& file);

} // namespace ZLMIM::Tools

#endif
