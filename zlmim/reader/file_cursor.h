#ifndef ZLMIM_READER_FILE_CURSOR_H
#define ZLMIM_READER_FILE_CURSOR_H

#include "zlmim/model/record_array.h"
#include "zlmim/model/records.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace ZLMIM
{

class PathResolver;

/// What to make of a file without any byte.
/// \ingroup inside
enum class EmptyFile : bool
{
    Refused,  ///< It isn't loaded.
    Accepted, ///< It is loaded, and its first read raises.
};

/// The bytes of a run of equal elements, as they lie in the file: without alignment, valid until the cursor's
/// data goes.
/// \ingroup inside
template <class T>
struct Run
{
    /// The first byte of the first element; null where there are none.
    const unsigned char* bytes = nullptr;
    /// Number of elements.
    std::size_t count = 0;
};

/// A whole file in memory and a read position in it. Knows bytes, numbers, records and text, but no blocks.
///
/// L being the file's length, `Data` has the indices 0 to L: the file's bytes, and one more of value 0 at
/// index L, which may be read like the others. A read that would leave these indices raises `BoundsError`, as
/// does one that would pass the `ReadAllowance` of the file; a sum on `Pos` that leaves the 32-bit range
/// raises `OverflowError`. A read that raises leaves `Pos` where it was (`GetString`: or on its text).
/// \ingroup inside
class FileCursor
{
public:
    /// Index of the next byte to read. May be set to anything; only a read tests it.
    std::int32_t Pos = 0;

    /// Brings the file into `Data`, and its length into `fileSize`; `Pos` stays. False if the file is
    /// missing, unreadable, no regular file, too long or, where that is asked, empty, or if there is no
    /// memory for it. Raises nothing. `fileSize` changes only if the length was reached, and can be held.
    [[nodiscard]] bool LoadFile(const std::u16string& name, PathResolver& paths, std::int32_t& fileSize,
                                EmptyFile emptyFile) noexcept;

    /// As `LoadFile` does for a file with these bytes, which are copied.
    [[nodiscard]] bool LoadBytes(std::span<const std::byte> bytes, std::int32_t& fileSize,
                                 EmptyFile emptyFile) noexcept;

    /// Frees the file's bytes: there is no `Data` until the next load.
    void Release() noexcept;

    /// The file's bytes and the 0 behind them; empty without `Data`.
    [[nodiscard]] std::span<const unsigned char> Data() const noexcept
    {
        return {mData.data(), mData.size()};
    }

    /// L; -1 without `Data`.
    [[nodiscard]] std::int32_t FileSize() const noexcept
    {
        return static_cast<std::int32_t>(static_cast<std::int64_t>(mData.size()) - 1);
    }

    /// `n` characters, zeroes included.
    [[nodiscard]] std::u16string GetTag(std::int32_t n);
    /// Takes as many bytes as `tag` has, and answers whether they are this tag, which is ASCII: what
    /// comparing with the answer of `GetTag` tells, without a text.
    [[nodiscard]] bool TakesTag(std::string_view tag);
    /// An i32 length, and text of at most that many bytes: it ends at the first 0. `Pos` moves by the stored
    /// length wherever the text ended, so a negative one moves it back.
    [[nodiscard]] std::u16string GetString();
    /// 4 bytes: a whole number.
    [[nodiscard]] std::int32_t GetLong() { return GetFixed<std::int32_t>(); }
    /// 2 bytes: a whole number.
    [[nodiscard]] std::int16_t GetShort() { return GetFixed<std::int16_t>(); }
    /// 4 bytes: a float, copied to `value`. 32-bit x86 returns floats in the x87 unit, which changes a
    /// signalling NaN.
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

    /// `count` elements of one kind at once, none if `count` is negative: all that as many single reads would
    /// do, in one test.
    template <class T>
    [[nodiscard]] Run<T> GetRun(std::int32_t count)
    {
        if (count <= 0)
            return {};
        return {TakeRun(count, sizeof(T)), static_cast<std::size_t>(count)};
    }

    /// Whether a run of `count` elements of `size` bytes can be read here.
    [[nodiscard]] bool CanRead(std::int64_t count, std::int64_t size) const noexcept;

    /// How many of `count` elements of at least `size` bytes can follow: what a list may make room for.
    [[nodiscard]] std::size_t MostThatFit(std::int32_t count, std::int32_t size) const noexcept;

private:
    bool AdoptLength(std::int64_t length, std::int32_t& fileSize, EmptyFile emptyFile);
    /// The one test of all reads: tests `size` bytes at `Pos`, and counts them as read.
    const unsigned char* Test(std::int64_t size)
    {
        if (Pos < 0 || Pos > FileSize() || size > std::int64_t{FileSize()} + 1 - Pos || size > mAllowance)
            RaiseBounds(size);
        mAllowance -= size;
        return mData.data() + Pos;
    }
    const unsigned char* TakeRun(std::int32_t count, std::size_t size);
    [[noreturn]] void RaiseBounds(std::int64_t size) const;

    template <class T>
    void Copy(T& value)
    {
        std::memcpy(&value, Test(sizeof(T)), sizeof(T));
        Pos += static_cast<std::int32_t>(sizeof(T)); // at most L + 1, which an i32 holds
    }
    template <class T>
    T GetFixed()
    {
        T value;
        Copy(value);
        return value;
    }

    RecordArray<unsigned char> mData;
    std::int64_t mAllowance = 0;
};

} // namespace ZLMIM

#endif
