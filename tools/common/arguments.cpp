#include "tools/common/arguments.h"

#include "zlmim/reader/native_path.h"

#include <algorithm>

namespace ZLMIM::Tools
{

std::u16string FileName(const std::string& path)
{
    std::u16string name = FromNativeName(path);
    std::replace(name.begin(), name.end(), u'/', u'\\');
    return name;
}

} // namespace ZLMIM::Tools
