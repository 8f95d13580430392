#pragma once

#include "bench/made_anim.h"
#include "bench/made_mesh.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace Bench
{

/// Building blocks of the floors: plain system calls, `malloc`, `memcpy`.

struct Free
{
    void operator()(unsigned char* array) const noexcept { std::free(array); }
};
using Array = std::unique_ptr<unsigned char[], Free>;

/// How fresh memory gets its pages: by a fault at the first write to each, or in advance by one call.
enum class Pages
{
    Faulted,
    Prefaulted,
};
[[nodiscard]] Array NewArray(std::size_t bytes, Pages pages = Pages::Faulted);

/// A whole file, read at once into a fresh array.
struct RawFile
{
    Array bytes;
    std::size_t size = 0;
};
[[nodiscard]] RawFile ReadRawFile(const std::string& path, Pages pages = Pages::Faulted);
/// The same, or no bytes if there is no such file.
[[nodiscard]] RawFile ReadRawFileIfThere(const std::string& path);

/// Copies each run into a fresh array, and appends the arrays.
void CopyRuns(const RawFile& file, const std::vector<FileRun>& runs, std::vector<Array>& arrays,
              Pages pages = Pages::Faulted);

/// Copies the poses of each bone into a fresh table, and appends the tables.
void CopyFrames(const RawFile& file, const MadeAnim& anim, std::vector<Array>& tables,
                Pages pages = Pages::Faulted);

} // namespace Bench
