#ifndef ZLMIM_TOOLS_COMMON_TEXTURE_FILES_H
#define ZLMIM_TOOLS_COMMON_TEXTURE_FILES_H

#include "zlmim/reader/native_path.h"
#include "zlmim/reader/path_resolver.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Tools
{

/// The files that serve as a texture: those in the mesh's folder that have the texture's name up to its
/// ending, in any letter case, and any other ending or no ending. Meshes and animations don't count. The
/// folder is named with a separator at its end, and so are the files' names in the system's form.
[[nodiscard]] std::vector<NativePath> TextureFiles(const NativePath& meshFolder, std::u16string_view texture,
                                                   PathResolver& names);

/// What is wrong with the file of a picture, such as "is cut short"; empty if nothing is, or it is of a kind
/// that isn't known. Looks at its size and a few bytes only.
[[nodiscard]] std::string PictureDamage(const NativePath& file);

} // namespace ZLMIM::Tools

#endif
