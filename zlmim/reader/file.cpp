#include "zlmim/reader/file.h"

#include "zlmim/model/errors.h"
#include "zlmim/reader/file_names.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ZLMIM
{
namespace
{

FileSystemError::Code CodeOf(int error)
{
    switch (error)
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

} // namespace

File File::Open(const std::u16string& name, FileNames& names)
{
    const auto found = names.Find(name);
    if (!found || found->kind != FoundFile::Kind::File)
        throw FileSystemError(FileSystemError::Code::NoSuchFile, name);
    // The entry may have been replaced since: without O_NONBLOCK, opening a pipe would wait for its writer.
    File file(name, ::open(found->systemName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.mDescriptor < 0)
        throw FileSystemError(CodeOf(errno), name);
    struct stat status;
    if (::fstat(file.mDescriptor, &status) != 0 || !S_ISREG(status.st_mode))
        throw FileSystemError(FileSystemError::Code::NoSuchFile, name);
    file.mSize = status.st_size;
    return file;
}

File::File(File&& other) noexcept
    : mName(std::move(other.mName)), mDescriptor(std::exchange(other.mDescriptor, -1)), mSize(other.mSize)
{
}

File::~File()
{
    if (mDescriptor >= 0)
        ::close(mDescriptor);
}

std::size_t File::Read(std::span<unsigned char> bytes)
{
    std::size_t total = 0;
    while (total < bytes.size())
    {
        const ssize_t taken = ::read(mDescriptor, bytes.data() + total, bytes.size() - total);
        if (taken == 0)
            break;
        if (taken > 0)
            total += static_cast<std::size_t>(taken);
        else if (errno != EINTR)
            throw FileSystemError(FileSystemError::Code::ReadError, mName);
    }
    return total;
}

} // namespace ZLMIM
