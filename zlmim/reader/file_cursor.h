#pragma once

#include "zlmim/model/prefault.h"
#include "zlmim/model/record_array.h"
#include "zlmim/model/records.h"
#include "zlmim/reader/load_budget.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM
{

class PathResolver;

/// Consecutive elements in the file's memory, unaligned. Valid as long as the cursor.
/// \ingroup inside
template <class T>
struct UnalignedArray
{
    /// The first byte of the first element; null for an empty array.
    const unsigned char* bytes = nullptr;
    /// Number of elements.
    std::size_t count = 0;
};

/// A whole file in memory and a read position in it. Reads bytes, numbers, records and text; doesn't know
/// blocks. A cursor loads one file, and lives as long as that load.
///
/// With L as the file's length, `Data` has the indices 0 to L: the file's bytes, and a 0 byte at index L,
/// which can be read like the others. A read outside these indices throws `BoundsError`, and so does a read
/// that exceeds the file's `ReadAllowance`. A sum on `Pos` outside the 32-bit range throws `OverflowError`. A
/// read that throws leaves `Pos` unchanged (`GetString`: or at the start of its text).
/// \ingroup inside
class FileCursor
{
public:
    /// Charges the file and the objects made from it to `budget`, which must outlive the cursor. The file's
    /// share is returned at the end.
    explicit FileCursor(LoadBudget& budget) : mBudget(budget) {}
    FileCursor(const FileCursor&) = delete;
    FileCursor& operator=(const FileCursor&) = delete;
    ~FileCursor() { mBudget.ReturnMemory(mCharged); }

    /// Index of the next byte to read. May be set to any value; only a read checks it.
    std::int32_t Pos = 0;

    /// Reads the file into `Data`, and its length into `fileSize`. `Pos` stays. Returns false if the file is
    /// missing, unreadable, not a regular file, too long, or too large for the available memory. `fileSize`
    /// changes only if the length was determined, and fits.
    /// @throws BoundsError if a limit is exceeded. Throws nothing else.
    [[nodiscard]] bool LoadFile(const std::u16string& name, PathResolver& paths, std::int32_t& fileSize);

    /// The same for these bytes, which are copied.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::int32_t& fileSize);

    /// Prefaults memory for the objects and small arrays that will be made from the next bytes of the file,
    /// unless that was done already. To be called as the reader moves on.
    void PrefaultObjects() noexcept;

    /// The file's bytes and the 0 after them; empty without `Data`.
    [[nodiscard]] std::span<const unsigned char> Data() const noexcept { return mData; }

    /// L; -1 without `Data`.
    [[nodiscard]] std::int32_t FileSize() const noexcept
    {
        return static_cast<std::int32_t>(static_cast<std::int64_t>(mData.size()) - 1);
    }

    /// `n` characters, including zeroes.
    [[nodiscard]] std::u16string GetTag(std::int32_t n);
    /// Reads `tag.size()` bytes; true if they equal `tag`. Otherwise `Pos` stays in front of them.
    /// @throws BoundsError, OverflowError as `GetTag`.
    [[nodiscard]] bool MatchTag(std::string_view tag);
    /// An i32 length, and text of at most that many bytes, which ends at the first 0. `Pos` moves by the
    /// stored length wherever the text ends. A negative length moves it back.
    [[nodiscard]] std::u16string GetString();
    /// 4 bytes: a signed integer.
    [[nodiscard]] std::int32_t GetLong() { return GetFixed<std::int32_t>(); }
    /// 2 bytes: a signed integer.
    [[nodiscard]] std::int16_t GetShort() { return GetFixed<std::int16_t>(); }
    /// 4 bytes: a float, copied to `value`. It isn't returned, since 32-bit x86 returns floats in the x87
    /// unit, which changes a signalling NaN.
    void GetSingle(float& value) { Copy(value); }
    /// 12 bytes.
    [[nodiscard]] Vector GetVector() { return GetFixed<Vector>(); }
    /// 12 bytes.
    [[nodiscard]] rgbColour GetColour() { return GetFixed<rgbColour>(); }
    /// 16 bytes.
    [[nodiscard]] Quaternion GetQuaternion() { return GetFixed<Quaternion>(); }
    /// 20 bytes.
    [[nodiscard]] Vertex GetVertex() { return GetFixed<Vertex>(); }
    /// 48 bytes.
    [[nodiscard]] Matrix GetMatrix() { return GetFixed<Matrix>(); }

    /// Reads `count` elements at once, with the result of that many single reads. Returns an empty array if
    /// `count` is negative.
    template <class T>
    [[nodiscard]] UnalignedArray<T> GetArray(std::int32_t count)
    {
        if (count <= 0)
            return {};
        return {TakeArray(count, sizeof(T)), static_cast<std::size_t>(count)};
    }

    /// Whether an array of `count` elements of `size` bytes can be read here.
    [[nodiscard]] bool CanRead(std::int64_t count, std::int64_t size) const noexcept;

    /// The remaining budget of the load.
    [[nodiscard]] LoadBudget& Budget() const noexcept { return mBudget; }

private:
    bool Charge(std::int64_t length, std::int32_t& fileSize);
    /// Makes the start of `memory` the `Data` of a file of that length, except for the file's bytes. Returns
    /// the place for them.
    std::span<unsigned char> SetData(std::span<unsigned char> memory, std::int64_t length);
    std::span<unsigned char> AllocateData(std::int64_t length);
    /// Bytes of `Data` from `Pos` on; negative if `Pos` is outside.
    [[nodiscard]] std::int64_t BytesLeft() const noexcept
    {
        return Pos < 0 || Pos > FileSize() ? -1 : static_cast<std::int64_t>(FileSize()) + 1 - Pos;
    }
    /// The check that all reads share: `size` bytes at `Pos`.
    const unsigned char* Test(std::int64_t size) const
    {
        if (size > BytesLeft() || size > mAllowance)
            ThrowBounds(size);
        return mData.data() + Pos;
    }
    /// Checks the same, and counts the bytes as read.
    const unsigned char* Take(std::int64_t size)
    {
        const unsigned char* const bytes = Test(size);
        mAllowance -= size;
        return bytes;
    }
    const unsigned char* TakeArray(std::int32_t count, std::size_t size);
    [[noreturn]] void ThrowBounds(std::int64_t size) const;

    template <class T>
    void Copy(T& value)
    {
        std::memcpy(&value, Take(sizeof(T)), sizeof(T));
        Pos += static_cast<std::int32_t>(sizeof(T)); // at most L + 1, which an i32 holds
    }
    template <class T>
    T GetFixed()
    {
        T value;
        Copy(value);
        return value;
    }

    /// For a small file on disk. A cursor lives on the stack, which unlike fresh memory costs no page faults.
    std::array<unsigned char, 24'576> mSmallFile;
    /// For any other file.
    RecordArray<unsigned char> mLargeFile;
    std::span<unsigned char> mData;
    LoadBudget& mBudget;
    /// The amount charged for the file's bytes.
    std::int64_t mCharged = 0;
    std::int64_t mAllowance = 0;
    /// Where `PrefaultObjects` has an effect again.
    std::int64_t mPrefaulted = 0;
};

} // namespace ZLMIM
