#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZLMIM::Tools
{

/// Makes standard output binary and, on a Windows console, UTF-8 until the program ends. Elsewhere the
/// program ends quietly when the reader of its output stops reading.
void SetUpOutput();

[[nodiscard]] bool IsOutputTerminal();
[[nodiscard]] bool IsErrorTerminal();

/// Columns of the terminal that standard output goes to; 80 if it isn't one.
[[nodiscard]] std::size_t OutputWidth();

/// Peak memory use of the program so far, in bytes; 0 if unknown.
[[nodiscard]] std::size_t PeakMemory();

enum class Colour
{
    Red,
    Yellow,
    Green,
    Cyan,
    Faint,
    Bold,
};

/// Wraps `text` in the terminal's codes for a colour if `isColoured`; else returns it unchanged.
[[nodiscard]] std::string Paint(std::string_view text, Colour colour, bool isColoured);

/// Whether to colour standard output: a terminal that understands codes, and no NO_COLOR in the environment.
[[nodiscard]] bool IsOutputColoured();

} // namespace ZLMIM::Tools
