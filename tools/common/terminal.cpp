#include "tools/common/terminal.h"

#include <array>
#include <cstdlib>

namespace ZLMIM::Tools
{
namespace
{

std::string_view Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string Paint(std::string_view text, Colour colour, bool isColoured)
{
    if (!isColoured || text.empty())
        return std::string(text);
    constexpr std::array<std::string_view, 6> kCodes = {"31", "33", "32", "36", "2", "1"};
    std::string painted = "\x1B[";
    painted.append(kCodes.at(static_cast<std::size_t>(colour))).append(1, 'm').append(text);
    return painted + "\x1B[0m";
}

bool IsOutputColoured()
{
    return IsOutputTerminal() && Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
}

} // namespace ZLMIM::Tools
