#pragma once

#include <filesystem>
#include <string>

namespace ZLMIM::Fuzzing
{

/// A folder on the disk with the sample's meshes and animations, for the entries of mesh tables to load. Each
/// folder also contains `anim.kin` and `short.im`, which ends too early. Removed with the object.
class SampleFolder
{
public:
    /// @throws std::filesystem::filesystem_error or std::ios_base::failure if that can't be written.
    SampleFolder();
    SampleFolder(const SampleFolder&) = delete;
    SampleFolder& operator=(const SampleFolder&) = delete;
    ~SampleFolder();

    /// The folder's name in the object model's form, with a trailing backslash. It's in lower case, so that a
    /// mesh path finds it without a search.
    [[nodiscard]] const std::u16string& Name() const { return mName; }

private:
    std::filesystem::path mPath;
    std::u16string mName;
};

} // namespace ZLMIM::Fuzzing
