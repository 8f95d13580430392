#ifndef ZLMIM_MODEL_ERRORS_H
#define ZLMIM_MODEL_ERRORS_H

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZLMIM
{

/// A standard error that also names the file that was being read. `what` begins with that name.
/// \ingroup errors
template <class StandardError>
class ErrorInFile : public StandardError
{
public:
    /// `text` says what went wrong.
    explicit ErrorInFile(const std::string& text) : StandardError(text) {}

    /// The name of the file, as it was given to `Load`; empty for an error outside of a load.
    [[nodiscard]] const std::u16string& File() const noexcept;
    /// Sets the name, unless the error has one: the load that failed first knows best. Without memory for it
    /// the error stays without a name.
    void SetFile(const std::u16string& file) noexcept;

    /// The file's name, if there is one, and the text; in UTF-8.
    [[nodiscard]] const char* what() const noexcept override
    {
        return mNamed ? mNamed->text.c_str() : StandardError::what();
    }

private:
    struct Named
    {
        std::u16string file;
        std::string text;
    };
    std::shared_ptr<const Named> mNamed; // shared, since copying an error must not throw
};

extern template class ErrorInFile<std::out_of_range>;
extern template class ErrorInFile<std::overflow_error>;

/// An index or a read outside of the data, or a limit that was exceeded (see \ref limits). Ends the `Load`
/// under way; the object keeps what was filled. \ingroup errors
class BoundsError : public ErrorInFile<std::out_of_range>
{
public:
    /// `text` says what went wrong, `position` as below.
    BoundsError(const std::string& text, std::int64_t position) : ErrorInFile(text), mPosition(position) {}

    /// The first index that lies outside: a byte of the file, from 0, for a read; an element, a slot or an
    /// entry otherwise, numbered as in its array or list. For a limit, the limit.
    [[nodiscard]] std::int64_t Position() const noexcept { return mPosition; }

private:
    std::int64_t mPosition;
};

/// A read position or a total that leaves the 32-bit signed range. Ends the `Load` under way; the object
/// keeps what was filled. \ingroup errors
class OverflowError : public ErrorInFile<std::overflow_error>
{
public:
    /// `text` says what went wrong, `sum` as below.
    OverflowError(const std::string& text, std::int64_t sum) : ErrorInFile(text), mSum(sum) {}

    /// The sum, as it would be without the limit.
    [[nodiscard]] std::int64_t Sum() const noexcept { return mSum; }

private:
    std::int64_t mSum;
};

/// Runs `load`, and adds the name of the file to a `BoundsError` or an `OverflowError` that leaves it.
/// \ingroup inside
template <class Load>
auto NameFileInErrors(const std::u16string& file, const Load& load)
try
{
    return load();
}
catch (BoundsError& error)
{
    error.SetFile(file);
    throw;
}
catch (OverflowError& error)
{
    error.SetFile(file);
    throw;
}

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
