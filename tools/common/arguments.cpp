#include "tools/common/arguments.h"

#include "zlmim/reader/system_name.h"

#include <algorithm>

namespace ZLMIM::Tools
{

std::u16string FileName(const std::string& path)
{
    std::u16string name = FromSystemName(path);
    std::replace(name.begin(), name.end(), u'/', u'\\');
    return name;
}

} // namespace ZLMIM::Tools
