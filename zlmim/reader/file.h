#ifndef ZLMIM_READER_FILE_H
#define ZLMIM_READER_FILE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace ZLMIM
{

class FileNames;

/// A regular file, open for reading; closed with the object. Folders, pipes and devices are never opened (a
/// pipe would block); links are followed.
class File
{
public:
    /// Finds and opens the file of that name in the object model's form, whatever its letter case.
    /// @throws FileSystemError if there is none, or no right to read it.
    [[nodiscard]] static File Open(const std::u16string& name, FileNames& names);

    File(File&& other) noexcept;
    File& operator=(File&&) = delete;
    ~File();

    /// Length in bytes when the file was opened.
    [[nodiscard]] std::int64_t Size() const noexcept { return mSize; }

    /// Fills `bytes` from where the last read ended, at first from the file's start. Answers how many there
    /// were: less than asked for only at the end of the file.
    /// @throws FileSystemError
    [[nodiscard]] std::size_t Read(std::span<unsigned char> bytes);

private:
    File(std::u16string name, int descriptor) : mName(std::move(name)), mDescriptor(descriptor) {}

    std::u16string mName;
    int mDescriptor;
    std::int64_t mSize = 0;
};

} // namespace ZLMIM

#endif
