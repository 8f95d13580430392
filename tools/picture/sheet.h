#pragma once

#include "image.h"

#include <string>
#include <utility>
#include <vector>

namespace ZLMIM::Picture
{

/// Pictures of one size in rows, each with a name below it.
class Sheet
{
public:
    Sheet(int width, int height) : mWidth(width), mHeight(height) {}

    void Add(Image image, std::string name) { mPictures.emplace_back(std::move(image), std::move(name)); }

    [[nodiscard]] bool IsEmpty() const { return mPictures.empty(); }

    /// The sheet, as several pages if it would be too large for one.
    [[nodiscard]] std::vector<Image> Pages() const;

private:
    int mWidth;
    int mHeight;
    std::vector<std::pair<Image, std::string>> mPictures;
};

/// The configs in a folder and below, as paths, sorted; empty if it isn't a folder.
[[nodiscard]] std::vector<std::string> AssetsBelow(const std::u16string& folder);

} // namespace ZLMIM::Picture
