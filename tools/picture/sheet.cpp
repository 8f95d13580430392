#include "sheet.h"

#include "tools/common/paths.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace ZLMIM::Picture
{
namespace
{

constexpr int kGap = 8;
constexpr int kTextHeight = 14;
/// Maximum number of pixels of a page.
constexpr std::int64_t kMaxPage = 100'000'000;

} // namespace

std::vector<Image> Sheet::Pages() const
{
    const int cellWidth = mWidth + kGap;
    const int cellHeight = mHeight + kTextHeight + kGap;
    const auto most = static_cast<std::size_t>(
        std::max<std::int64_t>(kMaxPage / (std::int64_t{cellWidth} * cellHeight), 1));
    std::vector<Image> pages;
    for (std::size_t first = 0; first < mPictures.size(); first += most)
    {
        const auto count = static_cast<int>(std::min(most, mPictures.size() - first));
        // Approximately square.
        const int columns = std::clamp(
            static_cast<int>(std::lround(std::sqrt(static_cast<double>(count) * cellHeight / cellWidth))), 1,
            count);
        const int rows = (count + columns - 1) / columns;
        Image page = {columns * cellWidth + kGap, rows * cellHeight + kGap, {}};
        page.Pixels.assign(static_cast<std::size_t>(page.Width) * static_cast<std::size_t>(page.Height),
                           glm::u8vec3(255));
        for (int i = 0; i < count; ++i)
        {
            const auto& [image, name] = mPictures[first + static_cast<std::size_t>(i)];
            const int x = kGap + i % columns * cellWidth;
            const int y = kGap + i / columns * cellHeight;
            Paste(page, image, x, y);
            Write(page, name, x, y + mHeight + 3, mWidth);
        }
        pages.push_back(std::move(page));
    }
    return pages;
}

std::vector<std::string> AssetsBelow(const std::u16string& folder)
{
    namespace fs = std::filesystem;
    std::vector<std::string> configs;
    std::error_code failure;
    const fs::path start = Tools::ToPath(ToNativePath(folder));
    if (!fs::is_directory(start, failure))
        return {};
    for (fs::recursive_directory_iterator entry(start, fs::directory_options::skip_permission_denied,
                                                failure);
         !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure))
    {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) &&
            LowerCase(Tools::ToName(entry->path().filename())) == u"config.txt")
        {
            const std::u8string path = entry->path().u8string();
            configs.emplace_back(path.begin(), path.end());
        }
    }
    std::sort(configs.begin(), configs.end());
    return configs;
}

} // namespace ZLMIM::Picture
