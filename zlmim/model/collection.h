#ifndef ZLMIM_MODEL_COLLECTION_H
#define ZLMIM_MODEL_COLLECTION_H

#include "zlmim/model/com_header.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/membership.h"
#include "zlmim/model/record_array.h"
#include "zlmim/model/records.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZLMIM
{

/// True for what a list holds by value: records and text. All else it holds by counted reference.
/// \ingroup inside
template <class T>
inline constexpr bool kHeldByValue = false;
/// A record.
/// \ingroup inside
template <>
inline constexpr bool kHeldByValue<Vector> = true;
/// Text.
/// \ingroup inside
template <>
inline constexpr bool kHeldByValue<std::u16string> = true;

/// The ordered list of the object model. Entries are numbered from 1 in the order in which they were added,
/// and enumerated in that order. A list is itself a shared object: a property hands out a reference to it.
///
/// An entry is a copy (`Vector`, text), or a shared reference, which may be none if a host added none; one
/// object may stand in several lists, and several times in one. The list keeps what its entries refer to.
/// \ingroup lists
template <class T>
class Collection
{
    static constexpr bool kHoldsRecords =
        std::conjunction_v<std::bool_constant<kHeldByValue<T>>, std::is_trivially_copyable<T>>;

public:
    /// What an entry is: a `T`, or a `std::shared_ptr` to one.
    using Entry = std::conditional_t<kHeldByValue<T>, T, std::shared_ptr<T>>;

    /// Walks over a list, and gives its entries by value; the list must live as long.
    class Iterator
    {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Entry;

        Iterator() = default;
        Iterator(const Collection* list, std::size_t index) : mList(list), mIndex(index) {}

        [[nodiscard]] Entry operator*() const { return mList->At(mIndex); }
        Iterator& operator++()
        {
            ++mIndex;
            return *this;
        }
        Iterator operator++(int) { return Iterator(mList, mIndex++); }
        bool operator==(const Iterator&) const = default;

    private:
        const Collection* mList = nullptr;
        std::size_t mIndex = 0;
    };

    Collection() = default;
    /// A list that is a part of a whole (see `Membership`).
    explicit Collection(Membership membership) : mMembership(std::move(membership)) {}
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    ~Collection() = default;

    /// The whole that the list is a part of.
    [[nodiscard]] const Membership& Group() const noexcept { return mMembership; }

    /// Appends an entry, which gets the number `Count` + 1.
    void Add(Entry entry)
    {
        if constexpr (kHeldByValue<T>)
            mEntries.push_back(std::move(entry));
        else
            mEntries.push_back(mMembership.Store(std::move(entry)));
    }

    /// Takes entry `number` out, from 1; those behind it move up.
    /// @throws BoundsError where there is no such entry.
    void Remove(std::int32_t number) { mEntries.erase(mEntries.begin() + IndexOf(number)); }

    /// Makes room for as many entries in all, where they are references.
    void Reserve(std::size_t count) requires(!kHeldByValue<T>) { mEntries.reserve(count); }

    /// Number of entries, and the highest number of one.
    [[nodiscard]] std::int32_t Count() const noexcept { return static_cast<std::int32_t>(mEntries.size()); }

    /// Entry `number`, from 1.
    /// @throws BoundsError where there is no such entry.
    [[nodiscard]] Entry Item(std::int32_t number) const
    {
        return At(static_cast<std::size_t>(IndexOf(number)));
    }

    /// From entry 1 on, for a range-based `for`. Entries that are added meanwhile aren't visited; none may be
    /// removed.
    [[nodiscard]] Iterator begin() const { return Iterator(this, 0); }
    /// Behind the last entry.
    [[nodiscard]] Iterator end() const { return Iterator(this, mEntries.size()); }

    /// All entries as they lie in memory, entry 1 at index 0, until the list changes or goes. References to
    /// parts of the list's own whole are uncounted there: good for a look, not for keeping.
    [[nodiscard]] std::span<const Entry> Entries() const { return {mEntries.data(), mEntries.size()}; }

    /// Appends `count` records from a file's bytes, which need no alignment.
    void AppendBytes(const unsigned char* bytes, std::size_t count) requires kHoldsRecords
    {
        mEntries.AppendBytes(bytes, count);
    }

    /// For component hosts; of no use to other callers.
    ZLMIM::ComHeader ComHeader;

private:
    using Storage = std::conditional_t<kHoldsRecords, RecordArray<T>, std::vector<Entry>>;

    [[nodiscard]] std::ptrdiff_t IndexOf(std::int32_t number) const
    {
        if (number < 1 || number > Count())
            throw BoundsError("no entry " + std::to_string(number) + " among " + std::to_string(Count()),
                              number);
        return std::ptrdiff_t{number} - 1;
    }

    [[nodiscard]] Entry At(std::size_t index) const
    {
        if constexpr (kHeldByValue<T>)
            return mEntries[index];
        else
            return mMembership.Share(mEntries[index]);
    }

    Membership mMembership;
    Storage mEntries;
};

} // namespace ZLMIM

#endif
