#pragma once

#include "zlmim/config/file_system.h"

#include <memory>
#include <pybind11/pybind11.h>

namespace ZLMIM::Python
{

/// The service that an object of Python's implements, see `zlmim.FileSystem`. Whatever it throws passes
/// through a load unchanged.
[[nodiscard]] std::shared_ptr<FileSystem> HostFiles(const pybind11::object& files);

/// The disk as a host sees it whose working folder is the asset's, whatever the real one is.
[[nodiscard]] std::shared_ptr<FileSystem> AssetFiles();

} // namespace ZLMIM::Python
