#pragma once

#include "gltf.h"

#include <filesystem>
#include <string>

namespace ZLMIM::Export
{

/// The bytes of one file with everything in it.
/// @throws std::length_error past the 4 GiB that such a file can have.
[[nodiscard]] std::string ToGlb(const Document& document);

/// Writes the file, as JSON with its `.bin` and pictures beside it if it ends in `.gltf`, else as one file.
/// @throws std::length_error past the 4 GiB that one file can have; nothing is written then.
/// @throws std::system_error if a file can't be written; see `Tools::SaveFile`.
void Save(const Document& document, const std::filesystem::path& file);

} // namespace ZLMIM::Export
