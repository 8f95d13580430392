#include "attempt.h"

#include "examples/inspect/tree_text.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <exception>
#include <new>

namespace ZLMIM::Validate
{

Examples::Outcome Attempt(const std::function<bool()>& load)
try
{
    return {load(), {}, {}};
}
catch (const BoundsError& error)
{
    return {false, "BoundsError", error.what()};
}
catch (const OverflowError& error)
{
    return {false, "OverflowError", error.what()};
}
catch (const FileSystemError& error)
{
    return {false, "FileSystemError", error.what()};
}
catch (const std::bad_alloc& error)
{
    return {false, "OutOfMemory", error.what()};
}
catch (const std::exception& error)
{
    return {false, "failure", error.what()};
}

std::string Told(const Examples::Outcome& outcome)
{
    const auto text = FromUtf8(outcome.What);
    return outcome.Raised + ": " + Inspect::Printable(text ? *text : FromWindows1252(outcome.What));
}

} // namespace ZLMIM::Validate
