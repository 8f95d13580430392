#include "words.h"

#include "tools/common/text.h"

namespace ZLMIM::Validate
{

std::string Quoted(std::u16string_view name) { return "\"" + Tools::Printable(name) + "\""; }

std::string Tally::AndMore() const
{
    return mCount > 1 ? " (and " + Tools::Number(mCount - 1) + " more)" : std::string();
}

} // namespace ZLMIM::Validate
