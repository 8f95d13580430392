#pragma once

#include "zlmim/model/prefault.h"
#include "zlmim/model/records.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace ZLMIM
{

/// A growing array of records, filled from the bytes of a file in one copy. Unlike `std::vector`, it never
/// writes memory twice: it doesn't zero memory that is about to be overwritten. Where it needs zeroes, it
/// requests zeroed memory from the system.
/// \ingroup inside
template <class T>
class RecordArray
{
    static_assert(kIsRecord<T>);

public:
    RecordArray() = default;
    /// Leaves `other` empty.
    RecordArray(RecordArray&& other) noexcept
        : mRecords(std::move(other.mRecords)), mSize(std::exchange(other.mSize, 0)),
          mCapacity(std::exchange(other.mCapacity, 0))
    {
    }
    /// Leaves `other` empty.
    RecordArray& operator=(RecordArray&& other) noexcept
    {
        mRecords = std::move(other.mRecords);
        mSize = std::exchange(other.mSize, 0);
        mCapacity = std::exchange(other.mCapacity, 0);
        return *this;
    }
    RecordArray(const RecordArray&) = delete;
    RecordArray& operator=(const RecordArray&) = delete;
    ~RecordArray() = default;

    /// `size` records, all bytes zero.
    /// @throws std::bad_alloc
    [[nodiscard]] static RecordArray Zeroed(std::size_t size)
    {
        if (size > kMaxSize)
            throw std::bad_alloc();
        return RecordArray(static_cast<T*>(std::calloc(std::max<std::size_t>(size, 1), sizeof(T))), size);
    }

    /// `size` records. The caller must write their bytes before they are read.
    /// @throws std::bad_alloc
    [[nodiscard]] static RecordArray Uninitialised(std::size_t size)
    {
        if (size > kMaxSize)
            throw std::bad_alloc();
        RecordArray records(static_cast<T*>(std::malloc(std::max<std::size_t>(size, 1) * sizeof(T))), size);
        records.Prefault();
        return records;
    }

    /// Appends a copy.
    /// @throws std::bad_alloc
    void push_back(const T& record)
    {
        std::array<unsigned char, sizeof(T)> copy; // `record` may be in this array, which Grow may move
        std::memcpy(copy.data(), &record, sizeof(T));
        Grow(1);
        std::memcpy(mRecords.get() + mSize, copy.data(), sizeof(T));
        ++mSize;
    }

    /// The first record.
    [[nodiscard]] const T* begin() const noexcept { return mRecords.get(); }

    /// Removes a record of this array. The records after it move up.
    void erase(const T* record) noexcept
    {
        T* const place = mRecords.get() + (record - mRecords.get());
        std::copy(place + 1, mRecords.get() + mSize, place);
        --mSize;
    }

    /// Appends `count` records from a file's bytes, which need no alignment.
    /// @throws std::bad_alloc
    void AppendBytes(const unsigned char* bytes, std::size_t count)
    {
        if (count == 0)
            return;
        Grow(count);
        PrefaultPages(mRecords.get() + mSize, count * sizeof(T));
        std::memcpy(mRecords.get() + mSize, bytes, count * sizeof(T));
        mSize += static_cast<std::uint32_t>(count);
    }

    /// Prefaults the memory of all records, see `PrefaultPages`. For records that will be written soon.
    void Prefault() noexcept { PrefaultPages(mRecords.get(), mSize * sizeof(T)); }

    /// A reference to the memory of all records, which then outlives this array, its growth and its
    /// assignment. What is written through one is seen by the other, until the array grows or is replaced.
    /// Null if nothing was allocated.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<T> Share()
    {
        if (!mRecords)
            return nullptr;
        if (!IsShared())
        {
            auto shared = std::make_unique<std::shared_ptr<T>>();
            *shared = std::move(mRecords);
            T* const records = shared->get();
            mRecords = std::unique_ptr<T, Free>(records, Free{std::move(shared)});
        }
        return *mRecords.get_deleter().shared;
    }

    /// Number of records.
    [[nodiscard]] std::size_t size() const noexcept { return mSize; }
    /// Whether the array is empty.
    [[nodiscard]] bool empty() const noexcept { return mSize == 0; }
    /// The records in memory order, valid until the array grows. May be null if the array is empty.
    [[nodiscard]] T* data() noexcept { return mRecords.get(); }
    /// The same.
    [[nodiscard]] const T* data() const noexcept { return mRecords.get(); }
    /// Record `index`, from 0, which must exist.
    [[nodiscard]] T& operator[](std::size_t index) { return mRecords.get()[index]; }
    /// The same.
    [[nodiscard]] const T& operator[](std::size_t index) const { return mRecords.get()[index]; }

private:
    struct Free
    {
        void operator()(T* records) const noexcept
        {
            if (!shared)
                std::free(records);
        }

        /// Owns the memory once it is shared. Few arrays ever are, so the others pay for one pointer only.
        std::unique_ptr<std::shared_ptr<T>> shared;
    };

    /// Sizes have 32 bits.
    static constexpr std::size_t kMaxSize = std::min<std::size_t>(
        std::numeric_limits<std::uint32_t>::max(), std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T));

    RecordArray(T* records, std::size_t size)
        : mRecords(records), mSize(static_cast<std::uint32_t>(size)), mCapacity(mSize)
    {
        if (!records)
            throw std::bad_alloc();
    }

    void Grow(std::size_t count)
    {
        if (count <= mCapacity - mSize)
            return;
        if (count > kMaxSize - mSize)
            throw std::bad_alloc();
        const std::size_t capacity = std::max(mSize + count, std::min(std::size_t{mCapacity} * 2, kMaxSize));
        const bool isShared = IsShared();
        T* const old = mRecords.get();
        auto* const grown =
            static_cast<T*>(std::realloc(isShared ? nullptr : static_cast<void*>(old), capacity * sizeof(T)));
        if (!grown)
            throw std::bad_alloc();
        if (isShared)
            std::memcpy(grown, old, mSize * sizeof(T));
        else
            static_cast<void>(mRecords.release()); // realloc has freed or moved it
        mRecords = std::unique_ptr<T, Free>(grown);
        mCapacity = static_cast<std::uint32_t>(capacity);
    }

    [[nodiscard]] bool IsShared() const noexcept { return mRecords.get_deleter().shared != nullptr; }

    std::unique_ptr<T, Free> mRecords;
    std::uint32_t mSize = 0;
    std::uint32_t mCapacity = 0;
};

} // namespace ZLMIM
