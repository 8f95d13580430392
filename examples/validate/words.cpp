#include "words.h"

#include "examples/text.h"

namespace ZLMIM::Validate
{

std::string Quoted(std::u16string_view name) { return "\"" + Examples::Printable(name) + "\""; }

std::string Tally::AndMore() const
{
    return mCount > 1 ? " (and " + Examples::Number(mCount - 1) + " more)" : std::string();
}

} // namespace ZLMIM::Validate
