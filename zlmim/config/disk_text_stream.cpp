#include "zlmim/config/disk_text_stream.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

namespace ZLMIM
{

DiskTextStream::DiskTextStream(File file, std::u16string path)
    : mFile(std::move(file)), mPath(std::move(path))
{
}

bool DiskTextStream::AtEndOfStream() { return !Fill(); }

std::u16string DiskTextStream::ReadLine()
{
    if (!Fill())
        throw FileSystemError(FileSystemError::Code::PastEnd, mPath);
    std::u16string line;
    while (Fill())
    {
        const std::string_view there(mBuffer.data() + mNext, mEnd - mNext);
        const std::size_t length = std::min(there.find_first_of("\r\n"), there.size());
        line += FromWindows1252(there.substr(0, length));
        mNext += length;
        if (mNext == mEnd)
            continue;
        const bool isCarriageReturn = mBuffer[mNext++] == '\r';
        if (isCarriageReturn && Fill() && mBuffer[mNext] == '\n')
            ++mNext;
        break;
    }
    return line;
}

void DiskTextStream::Close()
{
    mFile.reset();
    mNext = mEnd;
}

/// Whether a byte is there to be taken, now or after the next piece has been read.
bool DiskTextStream::Fill()
{
    if (mNext < mEnd)
        return true;
    if (!mFile)
        return false;
    const auto bytes = std::as_writable_bytes(std::span(mBuffer));
    mNext = 0;
    mEnd = 0;
    mEnd = mFile->Read({reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()});
    return mEnd > 0;
}

} // namespace ZLMIM
