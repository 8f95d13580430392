#include "tools/common/save_file.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

namespace ZLMIM::Tools
{
namespace
{

namespace fs = std::filesystem;

/// Removes a file that was opened and not finished. A device or a pipe stays.
class Unfinished
{
public:
    Unfinished() = default;
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished()
    {
        std::error_code ignored;
        if (fs::is_regular_file(mPath, ignored))
            fs::remove(mPath, ignored);
    }
    /// A link stays too: the file that it leads to is removed.
    void Begin(const fs::path& path)
    {
        std::error_code ignored;
        mPath = fs::canonical(path, ignored);
    }
    void End() { mPath.clear(); }

private:
    fs::path mPath;
};

[[noreturn]] void Fail(const fs::path& path, const std::error_code& reason)
{
    const std::u8string name = path.u8string();
    throw std::system_error(reason, std::string(name.begin(), name.end()) + " can't be written");
}

} // namespace

void SaveFile(const fs::path& path, const std::function<void(std::ostream&)>& write)
{
    std::error_code failure;
    if (path.has_parent_path())
        fs::create_directories(path.parent_path(), failure);
    if (failure)
        Fail(path, failure);
    Unfinished unfinished; // outlives the stream: an open file can't be removed on every system
    std::ofstream file;
    try
    {
        file.exceptions(std::ios::failbit | std::ios::badbit);
        errno = 0;
        file.open(path, std::ios::binary);
        unfinished.Begin(path);
        write(file);
        file.close();
        unfinished.End();
    }
    catch (const std::ios_base::failure&) // whose own code isn't the system's
    {
        Fail(path, {errno != 0 ? errno : EIO, std::generic_category()});
    }
}

void SaveFile(const fs::path& path, std::string_view bytes)
{
    SaveFile(path, [bytes](std::ostream& out) { out << bytes; });
}

} // namespace ZLMIM::Tools
