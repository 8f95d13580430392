#ifndef ZLMIM_MODEL_ERRORS_H
#define ZLMIM_MODEL_ERRORS_H

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZLMIM
{

/// An index, or a read, outside of what is there. Ends the `Load` under way; the object stays as far as it
/// was filled.
class BoundsError : public std::out_of_range
{
public:
    BoundsError(const std::string& what, std::int64_t position) : std::out_of_range(what), mPosition(position)
    {
    }

    /// The first index that lies outside: a byte of the file for a read, an element or entry otherwise.
    [[nodiscard]] std::int64_t Position() const noexcept { return mPosition; }

private:
    std::int64_t mPosition;
};

/// A sum on a read position, or on a total, that leaves the 32-bit signed range. Ends the `Load` under way;
/// the object stays as far as it was filled.
class OverflowError : public std::overflow_error
{
public:
    OverflowError(const std::string& what, std::int64_t sum) : std::overflow_error(what), mSum(sum) {}

    /// The sum, as it would be without the limit.
    [[nodiscard]] std::int64_t Sum() const noexcept { return mSum; }

private:
    std::int64_t mSum;
};

/// The file system could not do what it was asked for.
class FileSystemError : public std::runtime_error
{
public:
    /// The classic number of the failure.
    enum class Code : std::int32_t
    {
        NoSuchFile = 53,
        ReadError = 57,
        PastEnd = 62,
        NoPermission = 70,
        NoSuchFolder = 76,
    };

    FileSystemError(Code number, const std::u16string& path);

    [[nodiscard]] Code Number() const noexcept { return mNumber; }
    /// The path as it was given.
    [[nodiscard]] const std::u16string& Path() const noexcept { return *mPath; }

private:
    Code mNumber;
    std::shared_ptr<const std::u16string> mPath; // shared, since copying an error must not raise
};

[[noreturn]] void RaiseOverflow(std::int64_t sum);

/// The sum, or difference, of two 32-bit numbers as one.
/// @throws OverflowError where it leaves the 32-bit signed range.
[[nodiscard]] constexpr std::int32_t Checked(std::int64_t sum)
{
    if (!std::in_range<std::int32_t>(sum))
        RaiseOverflow(sum);
    return static_cast<std::int32_t>(sum);
}

/// a + b.
/// @throws OverflowError where the sum leaves the 32-bit signed range.
[[nodiscard]] constexpr std::int32_t CheckedAdd(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} + b);
}

/// a - b.
/// @throws OverflowError where the difference leaves the 32-bit signed range.
[[nodiscard]] constexpr std::int32_t CheckedSubtract(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} - b);
}

} // namespace ZLMIM

#endif
