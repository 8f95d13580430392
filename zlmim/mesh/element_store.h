#pragma once

#include "zlmim/model/errors.h"
#include "zlmim/model/record_array.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

/// One of the three arrays of a `Geometry`, indexed from 0, and its count. Setting a count of 0 or less keeps
/// the array, so the count may be lower than the array's size, but is never higher.
/// \ingroup inside
template <class T>
class ElementStore
{
public:
    /// As last set; may be negative.
    [[nodiscard]] std::int32_t Count() const noexcept { return mCount; }

    /// Sets the count. If it is greater than 0, replaces the array by one of that many zeroed elements.
    /// @throws std::bad_alloc; count and array are then unchanged.
    void SetCount(std::int32_t count)
    {
        Adopt(count, count > 0 ? RecordArray<T>::Zeroed(static_cast<std::size_t>(count)) : RecordArray<T>());
    }

    /// Sets the count. If it is greater than 0, replaces the array by `elements`, which has that size.
    void Adopt(std::int32_t count, RecordArray<T> elements) noexcept
    {
        mCount = count;
        if (count > 0)
            mElements = std::move(elements);
    }

    /// Copies element `index` to `element`. Returns false and leaves `element` unchanged outside the count.
    [[nodiscard]] bool Get(std::int32_t index, T& element) const noexcept
    {
        const bool isThere = index >= 0 && index < mCount;
        if (isThere)
            element = mElements[static_cast<std::size_t>(index)];
        return isThere;
    }

    /// @throws BoundsError outside the array, regardless of the count.
    void Set(std::int32_t index, const T& element)
    {
        if (index < 0 || static_cast<std::size_t>(index) >= mElements.size())
            throw BoundsError("no element " + std::to_string(index) + " in an array of " +
                                  std::to_string(mElements.size()),
                              index);
        mElements[static_cast<std::size_t>(index)] = element;
    }

    /// The elements within the count, valid until the count is set again.
    [[nodiscard]] std::span<const T> Elements() const noexcept
    {
        return mCount > 0 ? std::span<const T>(mElements.data(), mElements.size()) : std::span<const T>();
    }

    /// A reference to the memory of `Elements`, see `RecordArray::Share`.
    /// @throws std::bad_alloc
    [[nodiscard]] std::shared_ptr<T> Share() { return mElements.Share(); }

private:
    std::int32_t mCount = 0;
    RecordArray<T> mElements;
};

} // namespace ZLMIM
