#ifndef ZLMIM_COMPONENT_LIST_ENUMERATOR_H
#define ZLMIM_COMPONENT_LIST_ENUMERATOR_H

#include "zlmim/component/counted.h"

#include <cstdint>
#include <memory>

namespace ZLMIM::Component
{

/// Goes through a list of the model, which it holds. Entries that are added meanwhile are met as well.
class ListEnumerator final : public Counted<IEnumVARIANT>
{
public:
    /// Gives entry `number` of a list to the caller.
    using Entry = VARIANT (*)(const void* list, std::int32_t number);
    using Count = std::int32_t (*)(const void* list);

    /// An enumerator in front of the first entry, with one reference.
    [[nodiscard]] static ListEnumerator* Make(std::shared_ptr<const void> list, Entry entry, Count count,
                                              std::int32_t passed = 0);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* entries, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) noexcept override;

private:
    ListEnumerator(std::shared_ptr<const void> list, Entry entry, Count count, std::int32_t passed);

    std::shared_ptr<const void> mList;
    Entry mEntry;
    Count mCount;
    std::int32_t mPassed;
};

} // namespace ZLMIM::Component

#endif
