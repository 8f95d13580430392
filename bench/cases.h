#pragma once

#include "bench/pair.h"
#include "tests/temp_folder.h"

#include <string>
#include <vector>

namespace Bench
{

using ZLMIM::Testing::TempFolder;

/// Loads meshes by their names, and keeps them while it runs.
[[nodiscard]] Side LoadMeshes(const std::vector<std::u16string>& names);

// Each writes its generated files into the folder, which must outlive the measures.

[[nodiscard]] Measures LargeMesh(const TempFolder& folder);
[[nodiscard]] Measures LargeExport(const TempFolder& folder);
[[nodiscard]] Measures LargeAnimation(const TempFolder& folder);
[[nodiscard]] Measures SmallMeshes(const TempFolder& folder);
[[nodiscard]] Measures References(const TempFolder& folder);
[[nodiscard]] Measures MeshTable(const TempFolder& folder);
[[nodiscard]] Measures Installation(const TempFolder& folder);
[[nodiscard]] Measures BoneNames(const TempFolder& folder);
[[nodiscard]] Measures ComponentCalls(const TempFolder& folder);
/// The floor is the load in C++. Only built with the package for Python.
[[nodiscard]] Measures PythonMesh(const TempFolder& folder);
/// Other programs that read the same arrays, as far as they were installed when this was built.
[[nodiscard]] Measures Peers(const TempFolder& folder);

} // namespace Bench
