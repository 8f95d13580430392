#include "zlmim/reader/file_cursor.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"
#include "zlmim/reader/file.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

namespace ZLMIM
{
namespace
{

/// Bytes of a file for which memory is prefaulted at once, and bytes of their objects besides the arrays.
constexpr std::int64_t kPrefaultStep = 24 * 1'024;
constexpr std::int64_t kSmallObjects = 1'024;

} // namespace

bool FileCursor::LoadFile(const std::u16string& name, PathResolver& paths, std::int32_t& fileSize)
try
{
    mBudget.ChargeWork(LoadCost::FileQuestion);
    File file = File::Open(name, paths);
    const std::int64_t length = file.Size();
    if (!Charge(length, fileSize))
        return false;
    const bool isSmall = length < static_cast<std::int64_t>(mSmallFile.size());
    const auto bytes = isSmall ? SetData(mSmallFile, length) : AllocateData(length);
    return file.Read(bytes) == bytes.size();
}
catch (const BoundsError&) // an exceeded limit
{
    throw;
}
catch (const std::exception&)
{
    return false;
}

bool FileCursor::LoadBytes(std::span<const std::byte> bytes, std::int32_t& fileSize)
try
{
    const auto length = static_cast<std::int64_t>(bytes.size());
    if (!Charge(length, fileSize))
        return false;
    // Always allocated: AddressSanitizer then finds a read past the end, also of a small file.
    std::ranges::copy(bytes, std::as_writable_bytes(AllocateData(length)).begin());
    return true;
}
catch (const std::bad_alloc&)
{
    return false;
}

/// Stores the length, and charges it. Returns false if the file is too long.
bool FileCursor::Charge(std::int64_t length, std::int32_t& fileSize)
{
    if (length > kMaxFileSize)
        return false;
    fileSize = static_cast<std::int32_t>(length);
    mBudget.ChargeWork(length);
    mBudget.ChargeMemory(length);
    mCharged = length;
    mAllowance = ReadAllowance(length);
    return true;
}

std::span<unsigned char> FileCursor::SetData(std::span<unsigned char> memory, std::int64_t length)
{
    mData = memory.first(static_cast<std::size_t>(length) + 1);
    mData.back() = 0;
    return mData.first(mData.size() - 1);
}

std::span<unsigned char> FileCursor::AllocateData(std::int64_t length)
{
    mLargeFile = RecordArray<unsigned char>::Uninitialised(static_cast<std::size_t>(length) + 1);
    return SetData({mLargeFile.data(), mLargeFile.size()}, length);
}

void FileCursor::PrefaultObjects() noexcept
{
    if (Pos < mPrefaulted || Pos >= FileSize())
        return;
    const auto length = std::min<std::int64_t>(FileSize() - Pos, kPrefaultStep);
    PrefaultHeap(static_cast<std::size_t>(2 * length + kSmallObjects));
    mPrefaulted = Pos + length;
}

std::u16string FileCursor::GetTag(std::int32_t n)
{
    const std::int32_t last = CheckedSubtract(CheckedAdd(Pos, n), 1);
    std::u16string tag;
    if (last >= Pos)
        tag = FromAnsi({reinterpret_cast<const char*>(Take(n)), static_cast<std::size_t>(n)});
    Pos = last + 1;
    return tag;
}

bool FileCursor::MatchTag(std::string_view tag)
{
    const auto size = static_cast<std::int32_t>(tag.size());
    const std::int32_t next = CheckedAdd(Pos, size);
    if (std::memcmp(Test(size), tag.data(), tag.size()) != 0)
        return false;
    static_cast<void>(Take(size));
    Pos = next;
    return true;
}

std::u16string FileCursor::GetString()
{
    const std::int32_t length = GetLong();
    const std::int32_t last = CheckedSubtract(CheckedAdd(Pos, length), 1);
    std::u16string text;
    if (last >= Pos)
    {
        const std::int64_t there = std::min<std::int64_t>(length, BytesLeft());
        if (there <= 0)
            ThrowBounds(length);
        const unsigned char* const bytes = mData.data() + Pos;
        const void* const zero = std::memchr(bytes, 0, static_cast<std::size_t>(there));
        const std::int64_t size = zero ? static_cast<const unsigned char*>(zero) - bytes : there;
        mBudget.ChargeMemory(size * static_cast<std::int64_t>(sizeof(char16_t)));
        text = FromAnsi({reinterpret_cast<const char*>(Take(size)), static_cast<std::size_t>(size)});
    }
    Pos = last + 1;
    return text;
}

bool FileCursor::CanRead(std::int64_t count, std::int64_t size) const noexcept
{
    return BytesLeft() >= 0 && count <= std::min(BytesLeft(), mAllowance) / size;
}

const unsigned char* FileCursor::TakeArray(std::int32_t count, std::size_t size)
{
    const auto total = static_cast<std::int64_t>(count) * static_cast<std::int64_t>(size);
    const unsigned char* const bytes = Take(total);
    Pos = static_cast<std::int32_t>(Pos + total);
    return bytes;
}

void FileCursor::ThrowBounds(std::int64_t size) const
{
    const std::string read = std::to_string(size) + " bytes at " + std::to_string(Pos);
    if (size <= BytesLeft())
        throw BoundsError(read + ", blocks have been read over and over", Pos);
    const std::int64_t end = std::int64_t{FileSize()} + 1;
    throw BoundsError(read + ", data ends at " + std::to_string(FileSize()), BytesLeft() < 0 ? Pos : end);
}

} // namespace ZLMIM
