#include "zlmim/component/list_enumerator.h"

#include "zlmim/component/guid.h"
#include "zlmim/component/status.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace ZLMIM::Component
{
namespace
{

/// All enumerators, in a chain, so that each can follow removals from its list. Lists don't know theirs:
/// several threads may enumerate one list, and reading it mustn't change it.
std::mutex chainMutex;
ListEnumerator* firstEnumerator = nullptr;

} // namespace

ListEnumerator::ListEnumerator(std::shared_ptr<const void> list, Entry entry, Count count,
                               std::int32_t passed)
    : mList(std::move(list)), mEntry(entry), mCount(count), mPassed(passed)
{
    const std::lock_guard lock(chainMutex);
    mNext = std::exchange(firstEnumerator, this);
    if (mNext)
        mNext->mPrevious = this;
}

ListEnumerator::~ListEnumerator()
{
    const std::lock_guard lock(chainMutex);
    (mPrevious ? mPrevious->mNext : firstEnumerator) = mNext;
    if (mNext)
        mNext->mPrevious = mPrevious;
}

void ListEnumerator::EntryRemoved(const void* list, std::int32_t number) noexcept
{
    const std::lock_guard lock(chainMutex);
    for (ListEnumerator* each = firstEnumerator; each; each = each->mNext)
    {
        if (each->mList.get() == list && number <= each->mPassed)
            --each->mPassed;
    }
}

HRESULT ListEnumerator::QueryInterface(REFIID iid, void** object) noexcept
{
    return Share(object, IsSame(iid, kIUnknown) || IsSame(iid, kIEnumVariant));
}

HRESULT ListEnumerator::Next(ULONG count, VARIANT* entries, ULONG* fetched) noexcept
{
    if (fetched)
        *fetched = 0;
    if ((!entries && count > 0) || (!fetched && count != 1))
        return E_POINTER;
    std::for_each_n(entries, count, [](VARIANT& entry) { VariantInit(&entry); });
    ULONG given = 0;
    for (; given < count && mPassed < mCount(mList.get()); ++given, ++mPassed)
    {
        const HRESULT status = Guarded([&] { mEntry(mList.get(), mPassed + 1, entries[given]); });
        if (SUCCEEDED(status))
            continue;
        mPassed -= static_cast<std::int32_t>(given);
        while (given > 0)
            VariantClear(&entries[--given]);
        return status;
    }
    if (fetched)
        *fetched = given;
    return given == count ? S_OK : S_FALSE;
}

HRESULT ListEnumerator::Skip(ULONG count) noexcept
{
    const auto left = static_cast<ULONG>(mCount(mList.get()) - mPassed);
    mPassed += static_cast<std::int32_t>(std::min(count, left));
    return count <= left ? S_OK : S_FALSE;
}

HRESULT ListEnumerator::Reset() noexcept
{
    mPassed = 0;
    return S_OK;
}

HRESULT ListEnumerator::Clone(IEnumVARIANT** copy) noexcept
{
    if (!copy)
        return E_POINTER;
    *copy = nullptr;
    return Guarded([&] { *copy = new ListEnumerator(mList, mEntry, mCount, mPassed); });
}

} // namespace ZLMIM::Component
