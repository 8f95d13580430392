#include "zlmim/model/errors.h"

#include "zlmim/model/text.h"

#include <new>

namespace ZLMIM
{
namespace
{

std::string Describe(FileSystemError::Code number)
{
    switch (number)
    {
    case FileSystemError::Code::NoSuchFile:
        return "no such file";
    case FileSystemError::Code::ReadError:
        return "can't be read";
    case FileSystemError::Code::PastEnd:
        return "read past the end";
    case FileSystemError::Code::NoPermission:
        return "no permission";
    case FileSystemError::Code::NoSuchFolder:
        return "no such folder";
    }
    return "failure";
}

} // namespace

template <class StandardError>
const std::u16string& ErrorInFile<StandardError>::File() const noexcept
{
    static const std::u16string kNoFile;
    return mNamed ? mNamed->file : kNoFile;
}

template <class StandardError>
void ErrorInFile<StandardError>::SetFile(const std::u16string& file) noexcept
try
{
    if (!mNamed && !file.empty())
        mNamed = std::make_shared<const Named>(Named{file, ToUtf8(file) + ": " + StandardError::what()});
}
catch (const std::bad_alloc&)
{
}

template class ErrorInFile<std::out_of_range>;
template class ErrorInFile<std::overflow_error>;

FileSystemError::FileSystemError(Code number, const std::u16string& path)
    : std::runtime_error(ToUtf8(path) + ": " + Describe(number) + " (" +
                         std::to_string(static_cast<std::int32_t>(number)) + ")"),
      mNumber(number), mPath(std::make_shared<const std::u16string>(path))
{
}

void ThrowOverflow(std::int64_t sum)
{
    throw OverflowError(std::to_string(sum) + " leaves the 32-bit range", sum);
}

void ThrowLimit(std::string_view before, std::int64_t limit, std::string_view after)
{
    throw BoundsError(std::string(before) + std::to_string(limit) + std::string(after), limit);
}

} // namespace ZLMIM
