#include "zlmim/model/errors.h"

#include "zlmim/model/text.h"

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

} // namespace ZLMIM
