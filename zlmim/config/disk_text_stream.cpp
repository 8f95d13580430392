#include "zlmim/config/disk_text_stream.h"

#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace ZLMIM
{

bool DiskTextStream::AtEndOfStream() { return !Fill(); }

std::u16string DiskTextStream::ReadLine()
{
    std::u16string line;
    while (!ReadPiece(line))
    {
    }
    return line;
}

bool DiskTextStream::ReadPiece(std::u16string& line)
{
    if (!Fill())
        throw FileSystemError(FileSystemError::Code::PastEnd, mFile.Name());
    const char* const start = mBuffer.data() + mNext;
    const char* const end = std::find_if(start, std::as_const(mBuffer).data() + mEnd,
                                         [](char c) { return c == '\r' || c == '\n'; });
    const std::string_view piece(start, static_cast<std::size_t>(end - start));
    if (line.empty())
        line = FromWindows1252(piece);
    else
        line += FromWindows1252(piece);
    mNext += piece.size();
    if (mNext == mEnd)
        return !Fill();
    const bool isCarriageReturn = mBuffer[mNext++] == '\r';
    if (isCarriageReturn && Fill() && mBuffer[mNext] == '\n')
        ++mNext;
    return true;
}

void DiskTextStream::Close()
{
    mFile.Close();
    mNext = mEnd;
}

/// True if the buffer has a byte. Reads the next piece if the buffer is empty.
bool DiskTextStream::Fill()
{
    if (mNext < mEnd)
        return true;
    if (!mFile.IsOpen())
        return false;
    // Reads up to the size, so no call is needed to find the end. Files of the system's own may have size 0.
    auto wanted = static_cast<std::int64_t>(mBuffer.size());
    if (mFile.Size() > 0)
        wanted = std::min(wanted, mFile.Size() - mRead);
    mNext = 0;
    mEnd = 0;
    mEnd = mFile.Read({reinterpret_cast<unsigned char*>(mBuffer.data()), static_cast<std::size_t>(wanted)});
    mRead += static_cast<std::int64_t>(mEnd);
    return mEnd > 0;
}

} // namespace ZLMIM
