#include "tools/common/progress_bar.h"

#include "tools/common/terminal.h"

#include <iostream>

namespace ZLMIM::Tools
{

ProgressBar::ProgressBar() : mIsTerminal(IsErrorTerminal()) {}

void ProgressBar::Show(std::size_t done, std::size_t all)
{
    if (!mIsTerminal)
        return;
    if (!mDisplay)
        mDisplay.emplace(static_cast<unsigned long>(all), std::cerr, "");
    *mDisplay += static_cast<unsigned long>(done) - mDisplay->count();
}

} // namespace ZLMIM::Tools
