#include "examples/command_line.h"

#include <csignal>

namespace ZLMIM::Examples
{

Arguments::Arguments(int argc, const char* const* argv) : mPointers(argv, argv + argc) {}

void SetUpOutput() { static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); }

} // namespace ZLMIM::Examples
