#include "progress_bar.h"

#include <cstdio>
#include <iostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace ZLMIM::Validate
{
namespace
{

bool IsTerminal()
{
#ifdef _WIN32
    return ::_isatty(::_fileno(stderr)) != 0;
#else
    return ::isatty(STDERR_FILENO) != 0;
#endif
}

} // namespace

ProgressBar::ProgressBar() : mIsTerminal(IsTerminal()) {}

void ProgressBar::Show(std::size_t done, std::size_t all)
{
    if (!mIsTerminal)
        return;
    if (!mDisplay)
        mDisplay.emplace(static_cast<unsigned long>(all), std::cerr, "");
    *mDisplay += static_cast<unsigned long>(done) - mDisplay->count();
}

} // namespace ZLMIM::Validate
