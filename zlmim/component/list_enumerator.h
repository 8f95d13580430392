#pragma once

#include "zlmim/component/com_object.h"

#include <cstdint>
#include <memory>

namespace ZLMIM::Component
{

/// Enumerates a list of the model and keeps it alive. Includes entries that are added during the
/// enumeration, and skips no entry if hosts remove others.
class ListEnumerator final : public ComObject<IEnumVARIANT>
{
public:
    /// Stores entry `number` of a list in `entry`, which is empty. The caller owns it.
    using Entry = void (*)(const void* list, std::int32_t number, VARIANT& entry);
    using Count = std::int32_t (*)(const void* list);

    /// An enumerator after the first `passed` entries.
    ListEnumerator(std::shared_ptr<const void> list, Entry entry, Count count, std::int32_t passed = 0);
    ListEnumerator(const ListEnumerator&) = delete;
    ListEnumerator& operator=(const ListEnumerator&) = delete;

    /// To be called after a host has removed entry `number` of `list`.
    static void EntryRemoved(const void* list, std::int32_t number) noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* entries, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) noexcept override;

private:
    ~ListEnumerator() override;

    std::shared_ptr<const void> mList;
    Entry mEntry;
    Count mCount;
    std::int32_t mPassed;
    // Neighbours in the chain of all enumerators.
    ListEnumerator* mNext = nullptr;
    ListEnumerator* mPrevious = nullptr;
};

} // namespace ZLMIM::Component
