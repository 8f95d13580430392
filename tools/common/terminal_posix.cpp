#include "tools/common/arguments.h"
#include "tools/common/terminal.h"

#include <csignal>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace ZLMIM::Tools
{

std::vector<std::string> Arguments(int argc, const char* const* argv) { return {argv, argv + argc}; }

void SetUpOutput() { static_cast<void>(std::signal(SIGPIPE, SIG_DFL)); }

bool IsOutputTerminal() { return ::isatty(STDOUT_FILENO) != 0; }

bool IsErrorTerminal() { return ::isatty(STDERR_FILENO) != 0; }

std::size_t OutputWidth()
{
    winsize size = {};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

std::size_t PeakMemory()
{
    rusage usage = {};
    return ::getrusage(RUSAGE_SELF, &usage) == 0 ? static_cast<std::size_t>(usage.ru_maxrss) * 1024 : 0;
}

} // namespace ZLMIM::Tools
