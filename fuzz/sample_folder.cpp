#include "fuzz/sample_folder.h"

#include "tools/sample/sample_assets.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace ZLMIM::Fuzzing
{
namespace
{

void Write(const std::filesystem::path& path, std::string_view bytes)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file;
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file.open(path, std::ios::binary);
    file << bytes;
}

} // namespace

SampleFolder::SampleFolder()
    : mPath(std::filesystem::temp_directory_path() / ("zlmim-fuzz-" + std::to_string(::getpid()))),
      mName((mPath / "").u16string())
{
    std::replace(mName.begin(), mName.end(), u'/', u'\\');
    for (const auto& [name, bytes] : Sample::SampleAssets())
    {
        const std::filesystem::path path = mPath / name;
        const bool isMesh = path.extension() == ".im";
        if (!isMesh && path.extension() != ".kin")
            continue;
        Write(path, bytes);
        if (isMesh)
            Write(path.parent_path() / "short.im", std::string_view(bytes).substr(0, bytes.size() / 2));
        else
            Write(path.parent_path() / "anim.kin", bytes);
    }
}

SampleFolder::~SampleFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

} // namespace ZLMIM::Fuzzing
