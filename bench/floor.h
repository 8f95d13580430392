#pragma once

#include "bench/made_mesh.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Bench
{

/// Building blocks of the floors: plain system calls, `malloc`, `memcpy`.

/// A whole file, read at once into a fresh buffer. The caller frees it.
struct RawFile
{
    unsigned char* bytes = nullptr;
    std::size_t size = 0;
};
[[nodiscard]] RawFile ReadRawFile(const std::string& path);

/// Copies each run into a fresh array, and appends the arrays, which the caller frees.
void CopyRuns(const RawFile& file, const std::vector<FileRun>& runs, std::vector<void*>& arrays);

void FreeAll(const std::vector<void*>& arrays);

} // namespace Bench
