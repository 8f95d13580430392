#include "zlmim/reader/file.h"

#include "zlmim/reader/path_resolver.h"

namespace ZLMIM
{

File File::Open(const std::u16string& name, PathResolver& paths)
{
    if (auto file = OpenExact(ExactNativePath(name)))
        return *std::move(file);
    auto found = paths.Find(name, FoundFile::Kind::File);
    if (!found)
        throw FileSystemError(FileSystemError::Code::NoSuchFile, name);
    if (auto file = OpenExact(std::move(found->nativePath)))
        return *std::move(file);
    throw FileSystemError(LastFailure(), name);
}

File::File(File&& other) noexcept
    : mNativePath(std::move(other.mNativePath)), mHandle(std::exchange(other.mHandle, kNoHandle)),
      mSize(other.mSize)
{
}

} // namespace ZLMIM
