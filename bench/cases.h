#pragma once

#include "bench/pair.h"
#include "tests/temp_folder.h"

namespace Bench
{

using ZLMIM::Testing::TempFolder;

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
