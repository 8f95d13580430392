#pragma once

#include <cstddef>
#include <functional>

namespace ZLMIM::Tools
{

/// Calls `work(index, worker)` for each index below `count`, on at most `threads` threads, this one
/// included; on fewer if the system can't create them. Each worker, numbered from 0, does one thing at a
/// time. If `work` throws, no further index is begun, and the first exception is thrown here once all workers
/// have ended.
void ForEach(std::size_t count, unsigned threads,
             const std::function<void(std::size_t index, std::size_t worker)>& work);

} // namespace ZLMIM::Tools
