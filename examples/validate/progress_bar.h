#ifndef VALIDATE_PROGRESS_BAR_H
#define VALIDATE_PROGRESS_BAR_H

#include <boost/timer/progress_display.hpp>

#include <cstddef>
#include <optional>

namespace ZLMIM::Validate
{

/// Shows on standard error how far the work is, where that is a terminal.
class ProgressBar
{
public:
    ProgressBar();

    void Show(std::size_t done, std::size_t all);

private:
    bool mIsTerminal;
    std::optional<boost::timer::progress_display> mDisplay;
};

} // namespace ZLMIM::Validate

#endif
