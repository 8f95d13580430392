#ifndef ZLMIM_COMPONENT_LIVE_COUNT_H
#define ZLMIM_COMPONENT_LIVE_COUNT_H

#include <atomic>

namespace ZLMIM::Component
{

/// What hosts hold of this module: objects, lists, enumerators, factories and locks. While it isn't 0 the
/// module must stay loaded.
inline std::atomic<long> LiveCount = 0;
/// How many of these are locks.
inline std::atomic<long> LockCount = 0;

} // namespace ZLMIM::Component

#endif
