#include "zlmim/config/line_reader.h"

#include <string_view>

namespace ZLMIM
{

std::u16string LineReader::ReadLine()
{
    std::u16string line;
    for (bool isWhole = false; !isWhole;)
    {
        const std::size_t before = line.size();
        isWhole = mStream.ReadPiece(line);
        mBudget.ChargeWork(static_cast<std::int64_t>(line.size() - before) + 1);
        Shorten(line);
        // A growing string is briefly in memory twice, with room to grow further.
        mBudget.RequireMemory(static_cast<std::int64_t>(3 * line.size() * sizeof(char16_t)));
    }
    ++mLineCount;
    return line;
}

void LineReader::Shorten(std::u16string& text)
{
    if (text.size() <= mMostKept)
        return;
    mHasShortened = true;
    constexpr std::u16string_view kBlanks = u" \t";
    text.erase(0, text.find_first_not_of(kBlanks));
    if (text.size() <= mMostKept)
        return;
    // A quotation mark at the end closes a value; on its first line also with blanks after the mark.
    const std::size_t lastWord = text.find_last_not_of(kBlanks);
    std::u16string end;
    if (lastWord >= mMostKept - 2)
        end += text[lastWord];
    if (lastWord + 1 != text.size())
        end += text.back();
    text.replace(mMostKept - end.size(), std::u16string::npos, end);
}

} // namespace ZLMIM
