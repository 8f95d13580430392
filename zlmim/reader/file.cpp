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
    if (auto file = OpenExact(names.Guess(name)))
        return *std::move(file);
    const FoundFile* const found = names.Find(name);
    if (!found || found->kind != FoundFile::Kind::File)
        throw FileSystemError(FileSystemError::Code::NoSuchFile, name);
    if (auto file = OpenExact(found->systemName))
        return *std::move(file);
    throw FileSystemError(CodeOf(errno), name);
}

std::optional<File> File::OpenExact(std::string systemName)
{
    File file(std::move(systemName));
    file.mDescriptor = ::open(file.mSystemName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (!file.IsOpen() || ::fstat(file.mDescriptor, &status) != 0)
        return std::nullopt;
    if (!S_ISREG(status.st_mode))
    {
        errno = ENOENT; // for such a file, that is
        return std::nullopt;
    }
    file.mSize = status.st_size;
    return file;
}

File::File(File&& other) noexcept
    : mSystemName(std::move(other.mSystemName)), mDescriptor(std::exchange(other.mDescriptor, -1)),
      mSize(other.mSize)
{
}

std::u16string File::Name() const { return FromSystemPath(mSystemName); }

void File::Close() noexcept
{
    if (IsOpen())
        ::close(std::exchange(mDescriptor, -1));
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
            throw FileSystemError(FileSystemError::Code::ReadError, Name());
    }
    return total;
}

} // namespace ZLMIM
