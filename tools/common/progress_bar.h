#pragma once

#include <boost/timer/progress_display.hpp>

#include <cstddef>
#include <optional>

namespace ZLMIM::Tools
{

/// Shows progress on standard error if that is a terminal.
class ProgressBar
{
public:
    ProgressBar();

    void Show(std::size_t done, std::size_t all);

private:
    bool mIsTerminal;
    std::optional<boost::timer::progress_display> mDisplay;
};

} // namespace ZLMIM::Tools
