#include "examples/command_line.h"

#include <csignal>

namespace ZLMIM
{

Arguments::Arguments(int argc, const char* const* argv) : mPointers(argv, argv + argc) {}

Utf8Output::Utf8Output()
{
    // A reader that has seen enough makes a write fail, as a full disk does.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

Utf8Output::~Utf8Output() = default;

} // namespace ZLMIM
