#include "temp_folder.h"
#include "tools/common/save_file.h"

#include <csignal>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <system_error>

namespace ZLMIM::Tools
{
namespace
{

/// While in scope, files can't become longer than `bytes`, as on a full disk.
class LimitedFiles
{
public:
    explicit LimitedFiles(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit = {bytes, mBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    LimitedFiles(const LimitedFiles&) = delete;
    LimitedFiles& operator=(const LimitedFiles&) = delete;
    ~LimitedFiles()
    {
        ::setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandler);
    }

private:
    void (*mHandler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit mBefore = {};
};

TEST(SaveFile, ReportsTheFileAndTheReasonAndLeavesNoPartOfIt)
{
    const Testing::TempFolder folder;
    folder.Write("file", "old");
    folder.Write("folder/");
    std::filesystem::create_symlink("target", folder.Path() / "link");
    constexpr std::size_t kLimit = 100'000;
    const struct
    {
        const char* path;
        std::size_t size;
        std::errc reason; // 0 if it can be written
        bool isThereAfterwards;
    } cases[] = {
        {"new/folders/file", 5, {}, true},
        {"link", kLimit, {}, true},
        {"link", kLimit + 1, std::errc::file_too_large, false},
        {"file/below", 5, std::errc::not_a_directory, false},
        {"folder", 5, std::errc::is_a_directory, true},
        {"/dev/full", 5, std::errc::no_space_on_device, true},
        {"/proc/new/file", 5, std::errc::no_such_file_or_directory, false},
    };
    const LimitedFiles limited(kLimit);
    for (const auto& [name, size, reason, isThereAfterwards] : cases)
    {
        SCOPED_TRACE(name);
        const std::filesystem::path path = folder.Path() / name;
        std::string message;
        try
        {
            SaveFile(path, std::string(size, 'x'));
        }
        catch (const std::system_error& error)
        {
            message = error.what();
        }
        EXPECT_EQ(message,
                  reason == std::errc()
                      ? ""
                      : path.string() + " can't be written: " + std::make_error_code(reason).message());
        std::error_code ignored;
        EXPECT_EQ(std::filesystem::exists(path, ignored), isThereAfterwards);
    }
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link"));
    const auto file = folder.Path() / "file";
    EXPECT_THROW(SaveFile(file, [](std::ostream&) { throw std::length_error(""); }), std::length_error);
    EXPECT_FALSE(std::filesystem::exists(file));
}

} // namespace
} // namespace ZLMIM::Tools
