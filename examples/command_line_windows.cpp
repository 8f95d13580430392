#include "examples/command_line.h"

#include "zlmim/model/text.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <shellapi.h>

namespace ZLMIM::Examples
{

// The narrow arguments have lost what the system's code page lacks.
Arguments::Arguments(int argc, const char* const* argv) : mPointers(argv, argv + argc)
{
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> wide(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    if (!wide)
        return;
    for (int i = 0; i < count; ++i)
    {
        const std::wstring text = wide.get()[i];
        mTexts.push_back(ToUtf8(std::u16string(text.begin(), text.end())));
    }
    mPointers.clear();
    for (const std::string& text : mTexts)
        mPointers.push_back(text.c_str());
}

void SetUpOutput()
{
    static_cast<void>(::_setmode(::_fileno(stdout), _O_BINARY));
    static const UINT kFormerCodePage = ::GetConsoleOutputCP();
    if (kFormerCodePage != 0 && std::atexit([] { ::SetConsoleOutputCP(kFormerCodePage); }) == 0)
        ::SetConsoleOutputCP(CP_UTF8);
}

} // namespace ZLMIM::Examples
