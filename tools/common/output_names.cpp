#include "tools/common/output_names.h"

#include "tools/common/arguments.h"
#include "tools/common/asset.h"
#include "tools/common/paths.h"

#include "zlmim/model/text.h"

#include <system_error>

namespace ZLMIM::Tools
{

namespace fs = std::filesystem;

fs::path StemOf(const std::string& path)
{
    std::error_code failure;
    const fs::path file = fs::absolute(ToPath(ToNativePath(FileName(path))), failure).lexically_normal();
    const bool isMesh = KindOf(FileName(path)) == Kind::Mesh;
    const bool isConfig = LowerCase(ToName(file.extension())) == u".txt";
    fs::path stem = isMesh ? file.stem() : isConfig ? file.parent_path().filename() : file.filename();
    if (stem.empty() && !isConfig) // the path ends in a separator
        stem = file.parent_path().filename();
    return stem.empty() ? fs::path("asset") : stem;
}

fs::path OutputNames::Add(const fs::path& stem)
{
    fs::path output = stem;
    output += mEnding;
    for (int number = 2; !mTaken.insert(LowerCase(ToName(output))).second; ++number)
    {
        output = stem;
        output += "-" + std::to_string(number) + mEnding;
    }
    return output;
}

} // namespace ZLMIM::Tools
