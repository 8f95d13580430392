#include "zlmim/reader/file.h"

#include "zlmim/reader/file_names.h"

namespace ZLMIM
{

File File::Open(const std::u16string& name, FileNames& names)
{
    if (auto file = OpenExact(ExactSystemName(name)))
        return *std::move(file);
    auto found = names.Find(name, FoundFile::Kind::File);
    if (!found)
        throw FileSystemError(FileSystemError::Code::NoSuchFile, name);
    if (auto file = OpenExact(std::move(found->systemName)))
        return *std::move(file);
    throw FileSystemError(LastFailure(), name);
}

File::File(File&& other) noexcept
    : mSystemName(std::move(other.mSystemName)), mHandle(std::exchange(other.mHandle, kNoHandle)),
      mSize(other.mSize)
{
}

std::u16string File::Name() const { return FromSystemPath(mSystemName); }

} // namespace ZLMIM
