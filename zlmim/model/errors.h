#ifndef ZLMIM_MODEL_ERRORS_H
#define ZLMIM_MODEL_ERRORS_H

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZLMIM
{

/// An index, or a read, outside of what is there, or of what a file may ask for. Ends the `Load` under way;
/// the object stays as far as it was filled. \ingroup errors
class BoundsError : public std::out_of_range
{
public:
    /// `what` is the text, and `position` as below.
    BoundsError(const std::string& what, std::int64_t position) : std::out_of_range(what), mPosition(position)
    {
    }

    /// The first index that lies outside: a byte of the file, from 0, for a read; an element, a slot or an
    /// entry otherwise, numbered as in its array or list. Where a limit was reached, the number that reached
    /// it.
    [[nodiscard]] std::int64_t Position() const noexcept { return mPosition; }

private:
    std::int64_t mPosition;
};

/// A sum on a read position, or on a total, that leaves the 32-bit signed range. Ends the `Load` under way;
/// the object stays as far as it was filled.
/// \ingroup errors
class OverflowError : public std::overflow_error
{
public:
    /// `what` is the text, and `sum` as below.
    OverflowError(const std::string& what, std::int64_t sum) : std::overflow_error(what), mSum(sum) {}

    /// The sum, as it would be without the limit.
    [[nodiscard]] std::int64_t Sum() const noexcept { return mSum; }

private:
    std::int64_t mSum;
};

/// The file system could not do what it was asked for. Ends the `Load` of a `ZLMModel`, which stays as far as
/// it was filled; a mesh or an animation that can't be read is no such failure, but an answer of false.
/// \ingroup errors
class FileSystemError : public std::runtime_error
{
public:
    /// The classic number of the failure.
    enum class Code : std::int32_t
    {
        NoSuchFile = 53,   ///< No file stands under that name.
        ReadError = 57,    ///< The file can't be read.
        PastEnd = 62,      ///< A line behind the last one was wanted, such as the end of an open quotation.
        NoPermission = 70, ///< The file may not be read.
        NoSuchFolder = 76, ///< No folder stands under that name, or the name is empty.
    };

    /// `path` as the caller knows it; the text, in UTF-8, is made from both.
    FileSystemError(Code number, const std::u16string& path);

    /// What went wrong.
    [[nodiscard]] Code Number() const noexcept { return mNumber; }
    /// The path as it was given.
    [[nodiscard]] const std::u16string& Path() const noexcept { return *mPath; }

private:
    Code mNumber;
    std::shared_ptr<const std::u16string> mPath; // shared, since copying an error must not raise
};

/// @throws OverflowError always
/// \ingroup inside
[[noreturn]] void ThrowOverflow(std::int64_t sum);

/// The sum, or difference, of two 32-bit numbers as one.
/// @throws OverflowError where it leaves the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t Checked(std::int64_t sum)
{
    if (!std::in_range<std::int32_t>(sum))
        ThrowOverflow(sum);
    return static_cast<std::int32_t>(sum);
}

/// a + b.
/// @throws OverflowError where the sum leaves the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t CheckedAdd(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} + b);
}

/// a - b.
/// @throws OverflowError where the difference leaves the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t CheckedSubtract(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} - b);
}

} // namespace ZLMIM

#endif
