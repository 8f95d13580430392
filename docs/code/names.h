#pragma once

#include "zlmim/config/zlm_model.h"

#include <filesystem>
#include <memory>
#include <string>

namespace ZLMIM::Guide
{

/// A path in the form that `Load` takes: UTF-16 with backslashes.
[[nodiscard]] std::u16string NameOf(const std::filesystem::path& path);

/// Loads the asset of a config file, and makes its folder the working folder.
[[nodiscard]] std::shared_ptr<ZLMModel> LoadAsset(const std::filesystem::path& configFile);

} // namespace ZLMIM::Guide
