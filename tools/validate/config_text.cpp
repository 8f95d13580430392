#include "config_text.h"

#include "spelling.h"

#include "tools/common/paths.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace ZLMIM::Validate
{
namespace
{

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A'; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 && !IsBlank(c); }

std::int64_t LineOf(std::string_view bytes, std::size_t position)
{
    const std::string_view before = bytes.substr(0, position);
    const auto ends = std::count(before.begin(), before.end(), '\n');
    return 1 + (ends > 0 ? ends : std::count(before.begin(), before.end(), '\r'));
}

} // namespace

ConfigText::ConfigText(std::string_view bytes)
{
    while (!bytes.empty())
    {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        mLines.push_back(FromWindows1252(bytes.substr(0, end)));
        const std::size_t length = bytes.substr(end).starts_with("\r\n") ? 2 : 1;
        bytes.remove_prefix(std::min(end + length, bytes.size()));
    }
}

std::u16string ConfigText::ReadLine()
{
    if (mNext == mLines.size())
        throw FileSystemError(FileSystemError::Code::PastEnd, u"");
    return mLines[mNext++];
}

std::string ReadBytes(const NativePath& file)
{
    errno = 0;
    std::ifstream stream(Tools::ToPath(file), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad())
        throw std::system_error(errno, std::generic_category(), "it can't be read");
    return bytes;
}

bool CheckEncoding(std::string_view bytes, Report& report)
{
    const bool hasMark = bytes.starts_with(kByteOrderMark);
    const std::string_view text = hasMark ? bytes.substr(kByteOrderMark.size()) : bytes;
    if (std::all_of(text.begin(), text.end(), IsBlank))
    {
        report.Add(Code::ConfigEmpty, {}, "the file is empty");
        return false;
    }
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
    {
        report.Add(Code::ConfigNotText, {}, "it is UTF-16 text; save it as ANSI text (Windows-1252)");
        return false;
    }
    const auto control = std::find_if(bytes.begin(), bytes.end(), IsControl);
    if (control != bytes.end())
    {
        const auto position = static_cast<std::size_t>(control - bytes.begin());
        const bool isBinary = std::count_if(bytes.begin(), bytes.end(), IsControl) * 50 > std::ssize(bytes);
        report.Add(Code::ConfigNotText, {LineOf(bytes, position)},
                   isBinary ? "it is a binary file, not text" : "a control character in the text");
        return !isBinary;
    }
    const auto first = std::find_if(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
    if (first == text.end())
        return true;
    // Text of one byte a character is hardly ever UTF-8 by accident.
    const auto position = static_cast<std::size_t>(first - text.begin());
    const auto wide = FromUtf8(text);
    if (wide)
    {
        std::size_t length = 1;
        while (position + length < text.size() && (text[position + length] & 0xC0) == 0x80)
            ++length;
        const std::string_view character = text.substr(position, length);
        report.Add(Code::ConfigUtf8, {LineOf(text, position)},
                   "the text is UTF-8, so " + Quoted(*FromUtf8(character)) + " is read as " +
                       Quoted(FromWindows1252(character)) + "; save it as ANSI text (Windows-1252)");
    }
    return true;
}

} // namespace ZLMIM::Validate
