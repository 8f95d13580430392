#ifndef ZLMIM_MESH_ELEMENT_STORE_H
#define ZLMIM_MESH_ELEMENT_STORE_H

#include "zlmim/model/errors.h"
#include "zlmim/model/record_array.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

/// One of the three arrays of a `Geometry`: a count as it was last set, and an array from index 0, which the
/// count may have left behind (a count of 0 or less leaves it alone).
/// \ingroup inside
template <class T>
class ElementStore
{
public:
    /// As last set; may be negative.
    [[nodiscard]] std::int32_t Count() const noexcept { return mCount; }

    /// Stores `count`; if it is greater than 0, a new array of that many zeroed elements replaces the old
    /// one.
    /// @throws std::bad_alloc; the count stands, without an array.
    void SetCount(std::int32_t count)
    {
        mCount = count;
        if (count <= 0)
            return;
        mElements = {};
        mElements = RecordArray<T>::Zeroed(static_cast<std::size_t>(count));
    }

    /// The same for a count and an array that has just been filled.
    void Adopt(std::int32_t count, RecordArray<T> elements)
    {
        mCount = count;
        if (count > 0)
            mElements = std::move(elements);
    }

    /// The element, or nullptr outside the count.
    /// @throws BoundsError within the count but outside the array, which may not have found memory.
    [[nodiscard]] const T* Get(std::int32_t index) const
    {
        if (index < 0 || index >= mCount)
            return nullptr;
        TestInArray(index);
        return &mElements[static_cast<std::size_t>(index)];
    }

    /// @throws BoundsError outside the array, whatever the count.
    void Set(std::int32_t index, const T& element)
    {
        TestInArray(index);
        mElements[static_cast<std::size_t>(index)] = element;
    }

    /// The elements within the count, until it is set again.
    [[nodiscard]] std::span<const T> Elements() const noexcept
    {
        return mCount > 0 ? std::span<const T>(mElements.data(), mElements.size()) : std::span<const T>();
    }

private:
    void TestInArray(std::int32_t index) const
    {
        if (index < 0 || static_cast<std::size_t>(index) >= mElements.size())
            throw BoundsError("no element " + std::to_string(index) + " in an array of " +
                                  std::to_string(mElements.size()),
                              index);
    }

    std::int32_t mCount = 0;
    RecordArray<T> mElements;
};

} // namespace ZLMIM

#endif
