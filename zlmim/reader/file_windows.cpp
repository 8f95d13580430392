#include "zlmim/reader/file.h"

#include "zlmim/reader/windows_name.h"

#include <algorithm>
#include <windows.h>

namespace ZLMIM
{
namespace
{

/// Bytes to read per call: some file systems reject much larger reads.
constexpr std::size_t kMaxPiece = std::size_t{64} * 1'048'576;

HANDLE Handle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

bool IsRegular(HANDLE handle)
{
    BY_HANDLE_FILE_INFORMATION status;
    return ::GetFileType(handle) == FILE_TYPE_DISK && ::GetFileInformationByHandle(handle, &status) &&
           (status.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

} // namespace

FileSystemError::Code File::LastFailure() noexcept
{
    switch (::GetLastError())
    {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return FileSystemError::Code::NoSuchFile;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return FileSystemError::Code::NoPermission;
    default:
        return FileSystemError::Code::ReadError;
    }
}

std::optional<File> File::OpenExact(NativePath nativePath)
{
    File file(std::move(nativePath));
    const std::wstring name = CallName(file.mNativePath);
    if (name.empty() || name.back() == L'\\')
    {
        ::SetLastError(ERROR_FILE_NOT_FOUND);
        return std::nullopt;
    }
    // A pipe's server must not impersonate the caller.
    const HANDLE handle =
        ::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return std::nullopt;
    file.mHandle = reinterpret_cast<std::intptr_t>(handle);
    if (!IsRegular(handle))
    {
        file.Close();
        ::SetLastError(ERROR_FILE_NOT_FOUND); // treated as not found
        return std::nullopt;
    }
    LARGE_INTEGER size;
    if (!::GetFileSizeEx(handle, &size))
        return std::nullopt;
    file.mSize = size.QuadPart;
    return file;
}

void File::Close() noexcept
{
    if (IsOpen())
        ::CloseHandle(Handle(std::exchange(mHandle, kNoHandle)));
}

std::size_t File::Read(std::span<unsigned char> bytes)
{
    std::size_t total = 0;
    while (total < bytes.size())
    {
        const auto piece = static_cast<DWORD>(std::min(bytes.size() - total, kMaxPiece));
        DWORD taken = 0;
        if (!::ReadFile(Handle(mHandle), bytes.data() + total, piece, &taken, nullptr))
            throw FileSystemError(FileSystemError::Code::ReadError, Name());
        if (taken == 0)
            break;
        total += taken;
    }
    return total;
}

} // namespace ZLMIM
