#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace Sample
{

/// All files of the sample assets that the library reads: names below the folder that they are written into,
/// with slashes, and bytes.
[[nodiscard]] std::map<std::string, std::string> SampleAssets();

/// The pictures that the meshes name as their textures, which the library never opens.
[[nodiscard]] std::map<std::string, std::string> SamplePictures();

/// Writes them all.
/// @throws std::system_error if a file can't be written; see `Tools::SaveFile`.
void WriteSampleAssets(const std::filesystem::path& folder);

} // namespace Sample
