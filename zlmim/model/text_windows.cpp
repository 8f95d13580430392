#include "zlmim/model/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <windows.h>

namespace ZLMIM
{

std::u16string FromAnsi(std::string_view bytes)
{
    static const std::array<char16_t, 256> kAnsi = []
    {
        std::array<char16_t, 256> table{};
        for (std::size_t i = 0; i < table.size(); ++i)
        {
            const char byte = static_cast<char>(i);
            wchar_t character = 0;
            const bool isWhole =
                ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1) == 1;
            table[i] = isWhole ? static_cast<char16_t>(character) : FromWindows1252({&byte, 1}).front();
        }
        return table;
    }();
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return kAnsi[static_cast<unsigned char>(byte)]; });
    return text;
}

} // namespace ZLMIM
