#pragma once

#include "bench/pair.h"
#include "tests/temp_folder.h"

#include <vector>

namespace Bench
{

using ZLMIM::Testing::TempFolder;

// Each writes its generated files into the folder, which must outlive the cases.

[[nodiscard]] Case LargeMesh(const TempFolder& folder);
[[nodiscard]] Case LargeExport(const TempFolder& folder);
[[nodiscard]] Case LargeAnimation(const TempFolder& folder);
[[nodiscard]] Case SmallMeshes(const TempFolder& folder);
[[nodiscard]] std::vector<Case> References(const TempFolder& folder);
[[nodiscard]] Case MeshTable(const TempFolder& folder);
[[nodiscard]] Case BoneNames();
[[nodiscard]] std::vector<Case> ComponentCalls(const TempFolder& folder);
/// The floor is the load in C++. Only built with the package for Python.
[[nodiscard]] Case PythonMesh(const TempFolder& folder);

} // namespace Bench
