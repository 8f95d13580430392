#pragma once

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

/// A regular file, open for reading. The destructor closes it. Follows links. Anything but a regular file is
/// closed unread, without waiting for a pipe's writer.
/// \ingroup inside
class File
{
public:
    /// Finds and opens a file by its name in the object model's form, ignoring letter case if there is no
    /// exact match.
    /// @throws FileSystemError if there is no such file, or no permission to read it.
    [[nodiscard]] static File Open(const std::u16string& name, PathResolver& paths);

    /// Opens the file with this native path; `std::nullopt` if it doesn't exist or can't be opened.
    [[nodiscard]] static std::optional<File> OpenExact(NativePath nativePath);

    /// Leaves `other` closed.
    File(File&& other) noexcept;
    File& operator=(File&&) = delete;
    ~File() { Close(); }

    /// The path where the file was found.
    [[nodiscard]] const NativePath& FoundAt() const noexcept { return mNativePath; }
    /// The same in the object model's form.
    [[nodiscard]] std::u16string Name() const { return FromNativePath(mNativePath); }
    /// True until `Close`.
    [[nodiscard]] bool IsOpen() const noexcept { return mHandle != kNoHandle; }
    /// Closes the file. Does nothing if it isn't open.
    void Close() noexcept;

    /// Length in bytes when the file was opened.
    [[nodiscard]] std::int64_t Size() const noexcept { return mSize; }

    /// Fills `bytes` from the end of the last read, first from the start of the file. Returns the number of
    /// bytes read: less than requested only at the end of the file.
    /// @throws FileSystemError on a read error.
    [[nodiscard]] std::size_t Read(std::span<unsigned char> bytes);

private:
    explicit File(NativePath nativePath) : mNativePath(std::move(nativePath)) {}

    /// The reason why this thread's last `OpenExact` returned `std::nullopt`.
    [[nodiscard]] static FileSystemError::Code LastFailure() noexcept;

    static constexpr std::intptr_t kNoHandle = -1;

    NativePath mNativePath;
    /// The system's handle or descriptor of the open file.
    std::intptr_t mHandle = kNoHandle;
    std::int64_t mSize = 0;
};

} // namespace ZLMIM
