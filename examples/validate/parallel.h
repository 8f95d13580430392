#ifndef VALIDATE_PARALLEL_H
#define VALIDATE_PARALLEL_H

#include <cstddef>
#include <functional>

namespace ZLMIM::Validate
{

/// Calls `work(index, worker)` for each index below `count`, on that many threads at most, this one among
/// them; a worker, from 0, does one thing at a time. What `work` raises first is raised here, once all have
/// ended.
void ForEach(std::size_t count, unsigned threads,
             const std::function<void(std::size_t index, std::size_t worker)>& work);

} // namespace ZLMIM::Validate

#endif
