#ifndef ZLMIM_READER_FILE_H
#define ZLMIM_READER_FILE_H

#include "zlmim/model/errors.h"
#include "zlmim/reader/native_path.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

class PathResolver;

/// A regular file, open for reading; closed with the object. Links are followed. Something else under that
/// name is closed again unread, without waiting for a pipe's writer.
/// \ingroup inside
class File
{
public:
    /// Finds and opens the file of that name in the object model's form, whatever its letter case.
    /// @throws FileSystemError if there is none, or no right to read it.
    [[nodiscard]] static File Open(const std::u16string& name, PathResolver& paths);

    /// Opens the file that the system calls so; none if there is none, or it can't be opened.
    [[nodiscard]] static std::optional<File> OpenExact(NativePath nativePath);

    /// Leaves `other` closed.
    File(File&& other) noexcept;
    File& operator=(File&&) = delete;
    ~File() { Close(); }

    /// The name under which it was found, in the object model's form.
    [[nodiscard]] std::u16string Name() const;
    /// Until `Close`.
    [[nodiscard]] bool IsOpen() const noexcept { return mHandle != kNoHandle; }
    /// Closes the file, which need not be open.
    void Close() noexcept;

    /// Length in bytes when the file was opened.
    [[nodiscard]] std::int64_t Size() const noexcept { return mSize; }

    /// Fills `bytes` from where the last read ended, at first from the file's start. Answers how many there
    /// were: less than asked for only at the end of the file.
    /// @throws FileSystemError on a read error.
    [[nodiscard]] std::size_t Read(std::span<unsigned char> bytes);

private:
    explicit File(NativePath nativePath) : mNativePath(std::move(nativePath)) {}

    /// Why this thread's last `OpenExact` gave none.
    [[nodiscard]] static FileSystemError::Code LastFailure() noexcept;

    static constexpr std::intptr_t kNoHandle = -1;

    NativePath mNativePath;
    /// The system's number for the open file.
    std::intptr_t mHandle = kNoHandle;
    std::int64_t mSize = 0;
};

} // namespace ZLMIM

#endif
