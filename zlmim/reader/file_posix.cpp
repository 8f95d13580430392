#include "zlmim/reader/file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZLMIM
{

FileSystemError::Code File::LastFailure() noexcept
{
    switch (errno)
    {
    case ENOENT:
    case ENOTDIR:
        return FileSystemError::Code::NoSuchFile;
    case EACCES:
    case EPERM:
        return FileSystemError::Code::NoPermission;
    default:
        return FileSystemError::Code::ReadError;
    }
}

std::optional<File> File::OpenExact(NativePath nativePath)
{
    File file(std::move(nativePath));
    file.mHandle = ::open(file.mNativePath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (!file.IsOpen() || ::fstat(static_cast<int>(file.mHandle), &status) != 0)
        return std::nullopt;
    if (!S_ISREG(status.st_mode))
    {
        errno = ENOENT; // treated as not found
        return std::nullopt;
    }
    file.mSize = status.st_size;
    return file;
}

void File::Close() noexcept
{
    if (IsOpen())
        ::close(static_cast<int>(std::exchange(mHandle, kNoHandle)));
}

std::size_t File::Read(std::span<unsigned char> bytes)
{
    std::size_t total = 0;
    while (total < bytes.size())
    {
        const ssize_t taken = ::read(static_cast<int>(mHandle), bytes.data() + total, bytes.size() - total);
        if (taken == 0)
            break;
        if (taken > 0)
            total += static_cast<std::size_t>(taken);
        else if (errno != EINTR)
            throw FileSystemError(FileSystemError::Code::ReadError, Name());
    }
    return total;
}

} // namespace ZLMIM
