#include "zlmim/component/object_reference.h"

#include "zlmim/component/com_object.h"

#include <atomic>
#include <cstdint>
#include <limits>
#include <thread>

namespace ZLMIM::Component
{
namespace
{

/// `ComHeader::References` while a thread adds the first reference or drops the last one. Others then wait.
constexpr auto kBusy = std::numeric_limits<std::uint32_t>::max();

} // namespace

void AddReference(ComHeader& header, const void* functions, std::shared_ptr<void> object) noexcept
{
    std::uint32_t count = header.References.load(std::memory_order_relaxed);
    while (count == kBusy || !header.References.compare_exchange_weak(count, count == 0 ? kBusy : count + 1))
    {
        if (count == kBusy)
        {
            std::this_thread::yield();
            count = header.References;
        }
    }
    if (count > 0)
        return;
    header.Functions = functions;
    header.Self = std::move(object);
    ++LiveCount;
    header.References.store(1, std::memory_order_release);
}

ULONG STDMETHODCALLTYPE AddRef(ComHeader* object) noexcept { return object->References.fetch_add(1) + 1; }

ULONG STDMETHODCALLTYPE Release(ComHeader* object) noexcept
{
    std::uint32_t count = object->References.load(std::memory_order_relaxed);
    while (!object->References.compare_exchange_weak(count, count == 1 ? kBusy : count - 1))
    {
    }
    if (count > 1)
        return count - 1;
    std::shared_ptr<void> self = std::move(object->Self);
    object->Functions = nullptr;
    object->References.store(0, std::memory_order_release);
    self.reset(); // may delete the object, and the header with it
    --LiveCount;
    return 0;
}

} // namespace ZLMIM::Component
