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
/// Together they stay below 64 KiB: glibc may give a larger block back to the system at once.
constexpr std::int64_t kPrefaultStep = 24 * 1'024;
constexpr std::int64_t kSmallObjects = 4 * 1'024;

} // namespace

bool FileCursor::LoadFile(const std::u16string& name, PathResolver& paths, LoadBudget& budget,
                          std::int32_t& fileSize)
try
{
    mBudget = &budget;
    mCharged = 0;
    budget.ChargeWork(LoadCost::FileQuestion);
    File file = File::Open(name, paths);
    if (!MakeData(file.Size(), fileSize))
        return false;
    const std::size_t length = mData.size() - 1;
    return file.Read({mData.data(), length}) == length;
}
catch (const BoundsError&) // an exceeded limit
{
    throw;
}
catch (const std::exception&)
{
    return false;
}

bool FileCursor::LoadBytes(std::span<const std::byte> bytes, LoadBudget& budget, std::int32_t& fileSize)
try
{
    mBudget = &budget;
    mCharged = 0;
    if (!MakeData(static_cast<std::int64_t>(bytes.size()), fileSize))
        return false;
    std::copy_n(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), mData.data());
    return true;
}
catch (const std::bad_alloc&)
{
    return false;
}

bool FileCursor::MakeData(std::int64_t length, std::int32_t& fileSize)
{
    if (length > kMaxFileSize)
        return false;
    fileSize = static_cast<std::int32_t>(length);
    mBudget->ChargeWork(length);
    mData = {};
    mBudget->ChargeMemory(length);
    mCharged = length;
    mPrefaulted = 0;
    mHeap = {};
    if (length <= kPrefaultStep) // for the file's own bytes, too
        PrefaultNext(length);
    mData = RecordArray<unsigned char>::Uninitialised(static_cast<std::size_t>(length) + 1);
    mData[static_cast<std::size_t>(length)] = 0;
    mAllowance = ReadAllowance(length);
    return true;
}

void FileCursor::PrefaultObjects()
{
    if (Pos >= mPrefaulted && Pos < FileSize())
        PrefaultNext(std::min<std::int64_t>(FileSize() - Pos, kPrefaultStep));
}

void FileCursor::PrefaultNext(std::int64_t length)
{
    mHeap.Prefault(static_cast<std::size_t>(2 * length + kSmallObjects));
    mPrefaulted = Pos + length;
}

void FileCursor::Release() noexcept
{
    mBudget->ReturnMemory(std::exchange(mCharged, 0));
    mData = {};
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
        mBudget->ChargeMemory(size * static_cast<std::int64_t>(sizeof(char16_t)));
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
