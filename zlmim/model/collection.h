#pragma once

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
#include <variant>
#include <vector>

namespace ZLMIM
{

/// True for types that a list holds by value: records and text. A list holds all other types by counted
/// reference.
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
/// and enumerated in that order. A list is itself a shared object: a property returns a reference to it.
///
/// An entry is a copy (`Vector`, text) or a shared reference, which is null if a host added null. One object
/// may be in several lists, and several times in one. The list keeps the objects alive that its entries refer
/// to.
/// \ingroup lists
template <class T>
class Collection
{
    static constexpr bool kHoldsRecords =
        std::conjunction_v<std::bool_constant<kHeldByValue<T>>, std::is_trivially_copyable<T>>;

public:
    /// The type of an entry: a `T`, or a `std::shared_ptr` to one.
    using Entry = std::conditional_t<kHeldByValue<T>, T, std::shared_ptr<T>>;

    /// Iterates over a list, and returns its entries by value. The list must outlive it.
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
    /// A list that belongs to a group (see `Membership`).
    explicit Collection(Membership membership) requires kHasGroups<T> : mMembership(std::move(membership)) {}
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;
    ~Collection() = default;

    /// The group that the list belongs to.
    [[nodiscard]] const Membership& Group() const noexcept requires kHasGroups<T> { return mMembership; }

    /// Appends a copy of a record, which gets the number `Count` + 1.
    void Add(const T& record) requires kHoldsRecords { mEntries.push_back(record); }
    /// Appends an entry, which gets the number `Count` + 1.
    void Add(Entry entry) requires(!kHoldsRecords)
    {
        if constexpr (kHasGroups<T>)
            mEntries.push_back(mMembership.Store(std::move(entry)));
        else
            mEntries.push_back(std::move(entry));
    }

    /// Removes entry `number`, from 1. The entries after it move up.
    /// @throws BoundsError if there is no such entry.
    void Remove(std::int32_t number) { mEntries.erase(mEntries.begin() + IndexOf(number)); }

    /// Reserves memory for `count` entries in total. For lists of references only.
    void Reserve(std::size_t count) requires(!kHeldByValue<T>) { mEntries.reserve(count); }

    /// Number of entries, which is also the highest entry number.
    [[nodiscard]] std::int32_t Count() const noexcept { return static_cast<std::int32_t>(mEntries.size()); }

    /// Entry `number`, from 1.
    /// @throws BoundsError if there is no such entry.
    [[nodiscard]] Entry Item(std::int32_t number) const
    {
        return At(static_cast<std::size_t>(IndexOf(number)));
    }

    /// Starts at entry 1, for a range-based `for`. Entries that are added during the loop aren't visited.
    /// Don't remove entries during the loop.
    [[nodiscard]] Iterator begin() const { return Iterator(this, 0); }
    /// Past the last entry.
    [[nodiscard]] Iterator end() const { return Iterator(this, mEntries.size()); }

    /// All entries in memory order, entry 1 at index 0. Valid until the list changes or is destroyed.
    /// References to objects of the list's own group are uncounted here: read them, but don't keep them.
    [[nodiscard]] std::span<const Entry> Entries() const { return {mEntries.data(), mEntries.size()}; }

    /// Appends `count` records from a file's bytes, which need no alignment.
    void AppendBytes(const unsigned char* bytes, std::size_t count) requires kHoldsRecords
    {
        mEntries.AppendBytes(bytes, count);
    }

    /// A reference to the memory of `Entries`, which outlives the list and its changes.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<T> ShareEntries() requires kHoldsRecords { return mEntries.Share(); }

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
        if constexpr (kHasGroups<T>)
            return mMembership.Share(mEntries[index]);
        else
            return mEntries[index];
    }

    [[no_unique_address]] std::conditional_t<kHasGroups<T>, Membership, std::monostate> mMembership;
    Storage mEntries;
};

} // namespace ZLMIM
