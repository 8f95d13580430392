#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace ZLMIM::Testing
{

/// A new, empty folder, which is removed with the object, including its contents.
class TempFolder
{
public:
    TempFolder()
    {
        std::random_device random;
        do
            mPath = std::filesystem::temp_directory_path() / ("zlmim-" + std::to_string(random()));
        while (!std::filesystem::create_directory(mPath));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return mPath; }

    /// The full name of `entry` in the object model's form.
    [[nodiscard]] std::u16string Name(std::u16string_view entry) const
    {
        std::u16string name = mPath.u16string();
        std::replace(name.begin(), name.end(), u'/', u'\\');
        return (name += u'\\') += entry;
    }

    /// Writes a file, and creates the folders that lead to it. If `entry` ends in a slash, only creates
    /// folders.
    void Write(std::string_view entry, std::string_view bytes = {}) const
    {
        const std::filesystem::path path = mPath / entry;
        std::filesystem::create_directories(path.parent_path());
        if (path.has_filename())
            std::ofstream(path, std::ios::binary) << bytes;
    }

private:
    std::filesystem::path mPath;
};

} // namespace ZLMIM::Testing
