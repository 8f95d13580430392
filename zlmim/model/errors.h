#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace ZLMIM
{

/// A standard error that also names the file that was being read. `what` begins with that name.
/// \ingroup errors
template <class StandardError>
class ErrorInFile : public StandardError
{
public:
    /// `text` describes the error.
    explicit ErrorInFile(const std::string& text) : StandardError(text) {}

    /// The name of the file, as it was given to `Load`; empty for an error outside a load.
    [[nodiscard]] const std::u16string& File() const noexcept;
    /// Sets the name, unless the error has one: the innermost load knows the file best. If there is no memory
    /// for the name, the error stays without one.
    void SetFile(const std::u16string& file) noexcept;

    /// The file's name, if known, and the text; in UTF-8.
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

/// An index or a read outside the data, or an exceeded limit (see \ref limits). Ends the current `Load`. The
/// object keeps the values that were read before.
/// \ingroup errors
class BoundsError : public ErrorInFile<std::out_of_range>
{
public:
    /// `text` describes the error, `position` is documented at `Position`.
    BoundsError(const std::string& text, std::int64_t position) : ErrorInFile(text), mPosition(position) {}

    /// The first index outside the data. For a read, it is a byte of the file, from 0. Otherwise it is an
    /// element, a slot or an entry, numbered as in its array or list. For an exceeded limit, returns the
    /// limit.
    [[nodiscard]] std::int64_t Position() const noexcept { return mPosition; }

private:
    std::int64_t mPosition;
};

/// A read position or a total outside the 32-bit signed range. Ends the current `Load`. The object keeps the
/// values that were read before.
/// \ingroup errors
class OverflowError : public ErrorInFile<std::overflow_error>
{
public:
    /// `text` describes the error, `sum` is documented at `Sum`.
    OverflowError(const std::string& text, std::int64_t sum) : ErrorInFile(text), mSum(sum) {}

    /// The exact sum, outside the 32-bit range.
    [[nodiscard]] std::int64_t Sum() const noexcept { return mSum; }

private:
    std::int64_t mSum;
};

/// Runs `load`, and adds the file's name to a `BoundsError` or an `OverflowError` that it throws.
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

/// The file system couldn't do what was requested. Ends the `Load` of a `ZLMModel`, which keeps the values
/// that were read before. A mesh or an animation that can't be read doesn't throw this error: its `Load`
/// returns false.
/// \ingroup errors
class FileSystemError : public std::runtime_error
{
public:
    /// The classic error number.
    enum class Code : std::int32_t
    {
        NoSuchFile = 53,   ///< There is no such file.
        ReadError = 57,    ///< The file can't be read.
        PastEnd = 62,      ///< Read past the last line, for example to close a quotation.
        NoPermission = 70, ///< The file may not be read.
        NoSuchFolder = 76, ///< There is no such folder, or the name is empty.
    };

    /// `path` is the path as the caller knows it. The text, in UTF-8, is made from both arguments.
    FileSystemError(Code number, const std::u16string& path);

    /// The cause.
    [[nodiscard]] Code Number() const noexcept { return mNumber; }
    /// The path as it was given.
    [[nodiscard]] const std::u16string& Path() const noexcept { return *mPath; }

private:
    Code mNumber;
    std::shared_ptr<const std::u16string> mPath; // shared, since copying an error must not throw
};

/// @throws OverflowError always.
/// \ingroup inside
[[noreturn]] void ThrowOverflow(std::int64_t sum);

/// Reports an exceeded limit. The text is `before`, the limit and `after`, which names the limit.
/// @throws BoundsError always.
/// \ingroup inside
[[noreturn]] void ThrowLimit(std::string_view before, std::int64_t limit, std::string_view after);

/// Narrows a sum or difference to 32 bits.
/// @throws OverflowError outside the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t Checked(std::int64_t sum)
{
    if (!std::in_range<std::int32_t>(sum))
        ThrowOverflow(sum);
    return static_cast<std::int32_t>(sum);
}

/// a + b.
/// @throws OverflowError outside the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t CheckedAdd(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} + b);
}

/// a - b.
/// @throws OverflowError outside the 32-bit signed range.
/// \ingroup inside
[[nodiscard]] constexpr std::int32_t CheckedSubtract(std::int32_t a, std::int32_t b)
{
    return Checked(std::int64_t{a} - b);
}

} // namespace ZLMIM
