#ifndef ZLMIM_EXAMPLES_COMMAND_LINE_H
#define ZLMIM_EXAMPLES_COMMAND_LINE_H

#include <string>
#include <vector>

namespace ZLMIM::Examples
{

/// The arguments of the program, its name first: in UTF-8 on Windows, elsewhere the bytes that it was given.
class Arguments
{
public:
    Arguments(int argc, const char* const* argv);

    [[nodiscard]] int Count() const noexcept { return static_cast<int>(mPointers.size()); }
    [[nodiscard]] const char* const* Pointers() const noexcept { return mPointers.data(); }

private:
    std::vector<std::string> mTexts;
    std::vector<const char*> mPointers;
};

/// The name, with backslashes, that `Load` takes for a path from the command line.
[[nodiscard]] std::u16string FileName(const std::string& path);

/// Until the program ends, what is written to standard output arrives there byte by byte, and a console takes
/// it as UTF-8. What nobody reads any more makes a write fail.
void SetUpOutput();

} // namespace ZLMIM::Examples

#endif
