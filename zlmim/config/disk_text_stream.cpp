#include "zlmim/config/disk_text_stream.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

namespace ZLMIM
{

namespace
{

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

} // namespace

DiskTextStream::DiskTextStream(File file) : mFile(std::move(file)) {}

bool DiskTextStream::AtEndOfStream() { return !Fill(); }

std::u16string DiskTextStream::ReadLine()
{
    if (!Fill())
        throw FileSystemError(FileSystemError::Code::PastEnd, mFile.Name());
    std::u16string line;
    while (Fill())
    {
        const char* const start = mBuffer.data() + mNext;
        const char* const end = std::find_if(start, std::as_const(mBuffer).data() + mEnd, IsLineEnd);
        const std::string_view piece(start, static_cast<std::size_t>(end - start));
        line = line.empty() ? FromWindows1252(piece) : std::move(line) + FromWindows1252(piece);
        mNext += piece.size();
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
    mFile.Close();
    mNext = mEnd;
}

/// Whether a byte is there to be taken, now or after the next piece has been read.
bool DiskTextStream::Fill()
{
    if (mNext < mEnd)
        return true;
    if (!mFile.IsOpen())
        return false;
    const auto bytes = std::as_writable_bytes(std::span(mBuffer));
    mNext = 0;
    mEnd = 0;
    mEnd = mFile.Read({reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()});
    return mEnd > 0;
}

} // namespace ZLMIM
