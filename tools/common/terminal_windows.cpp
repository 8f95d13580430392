#include "tools/common/arguments.h"
#include "tools/common/terminal.h"

#include "zlmim/model/text.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <psapi.h>
#include <shellapi.h>

namespace ZLMIM::Tools
{

// The arguments of `main` have lost the characters that aren't in the system's code page.
std::vector<std::string> Arguments(int argc, const char* const* argv)
{
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> wide(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    if (!wide)
        return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
    {
        const std::wstring text = wide.get()[i];
        arguments.push_back(ToUtf8(std::u16string(text.begin(), text.end())));
    }
    return arguments;
}

void SetUpOutput()
{
    static_cast<void>(::_setmode(::_fileno(stdout), _O_BINARY));
    static const UINT kFormerCodePage = ::GetConsoleOutputCP();
    if (kFormerCodePage != 0 && std::atexit([] { ::SetConsoleOutputCP(kFormerCodePage); }) == 0)
        ::SetConsoleOutputCP(CP_UTF8);
    const HANDLE console = ::GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (::GetConsoleMode(console, &mode))
        ::SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

bool IsOutputTerminal() { return ::_isatty(::_fileno(stdout)) != 0; }

bool IsErrorTerminal() { return ::_isatty(::_fileno(stderr)) != 0; }

std::size_t OutputWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (!::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &info))
        return 80;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}

std::size_t PeakMemory()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    const bool isKnown = ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters)) != 0;
    return isKnown ? counters.PeakWorkingSetSize : 0;
}

} // namespace ZLMIM::Tools
