#include "names.h"

#include "zlmim/reader/native_path.h"

namespace ZLMIM::Guide
{

std::u16string NameOf(const std::filesystem::path& path)
{
    const auto& native = path.native(); // bytes on Linux, UTF-16 on Windows
    return FromNativePath(NativePath(native.begin(), native.end()));
}

std::shared_ptr<ZLMModel> LoadAsset(const std::filesystem::path& configFile)
{
    const std::filesystem::path path = std::filesystem::absolute(configFile);
    std::filesystem::current_path(path.parent_path());
    auto asset = std::make_shared<ZLMModel>();
    asset->Load(NameOf(path));
    return asset;
}

} // namespace ZLMIM::Guide
