#include "words.h"

#include "examples/inspect/tree_text.h"

namespace ZLMIM::Validate
{

std::string Quoted(std::u16string_view name) { return "\"" + Inspect::Printable(name) + "\""; }

std::string Tally::AndMore() const
{
    return mCount > 1 ? " (and " + Inspect::Number(mCount - 1) + " more)" : std::string();
}

} // namespace ZLMIM::Validate
