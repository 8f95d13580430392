#include "asset_folder.h"
#include "good_files.h"
#include "model_walker.h"
#include "sanitized.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/types.h>
#include <unistd.h>

namespace
{

/// If set, called for each `read`: returns how many of the wanted bytes to read, or -1 to fail with `errno`.
std::function<ssize_t(std::size_t wanted)> readLimit;
/// Whether `readdir` hides the types of the entries, as some file systems do.
bool hidesTypes = false;

template <class Entry>
Entry* WithoutType(Entry* entry)
{
    if (entry && hidesTypes)
        entry->d_type = DT_UNKNOWN;
    return entry;
}

} // namespace

// With --wrap=read, the linker turns calls of `read` into calls of `__wrap_read`, and `__real_read` is the C
// library's function.
extern "C"
{
    ssize_t __real_read(int file, void* bytes, std::size_t size);
    dirent* __real_readdir(DIR* folder);
    dirent64* __real_readdir64(DIR* folder);

    ssize_t __wrap_read(int file, void* bytes, std::size_t size)
    {
        const auto limit = readLimit ? readLimit(size) : static_cast<ssize_t>(size);
        return limit < 0 ? limit : __real_read(file, bytes, static_cast<std::size_t>(limit));
    }
    dirent* __wrap_readdir(DIR* folder) { return WithoutType(__real_readdir(folder)); }
    dirent64* __wrap_readdir64(DIR* folder) { return WithoutType(__real_readdir64(folder)); }
}

namespace ZLMIM::Testing
{
namespace
{

TEST(File, IsReadCompletelyOrNotAtAll)
{
    int calls = 0;
    const auto interrupted = [&](std::size_t wanted) -> ssize_t
    {
        errno = EINTR;
        return ++calls % 2 == 0 ? -1 : static_cast<ssize_t>(std::min<std::size_t>(wanted, 3));
    };
    const auto truncated = [&](std::size_t wanted) -> ssize_t
    { return ++calls == 1 ? static_cast<ssize_t>(std::min<std::size_t>(wanted, 12)) : 0; };
    const auto broken = [&](std::size_t) -> ssize_t
    {
        errno = EIO;
        return ++calls == 1 ? 12 : -1;
    };
    const struct
    {
        const char* name;
        std::function<ssize_t(std::size_t)> limit;
        bool isMeshLoaded;
        const char* configOutcome;
        std::u16string_view author, kind;
    } cases[] = {
        {"interrupted after every 3 bytes", interrupted, true, "", u"me", u"k"},
        {"truncated to 12 bytes after it was opened", truncated, false, "", u"me", u""},
        {"failing after 12 bytes", broken, false, "FileSystemError 57", u"", u""},
    };
    AssetFolder folder;
    folder.Wagon("author me\n\n\nkind k\n").Write("wagon/good.im", GoodMesh().Str());
    Mesh whole;
    ASSERT_TRUE(whole.Load(u"good.im"));
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.name);
        Mesh mesh;
        ZLMModel model;
        calls = 0;
        readLimit = c.limit;
        EXPECT_EQ(mesh.Load(u"good.im"), c.isMeshLoaded);
        calls = 0;
        EXPECT_EQ(folder.Load(model), c.configOutcome);
        readLimit = nullptr;
        EXPECT_EQ(mesh.FileSize, whole.FileSize);
        EXPECT_EQ(Walk(mesh) == Walk(whole), c.isMeshLoaded);
        EXPECT_EQ(model.Author, c.author);
        EXPECT_EQ(model.Kind, c.kind);
    }
}

TEST(FindConfigFile, FindsFoldersIfTheListingHasNoTypes)
{
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\n").Write("b/config.txt", "kuid <kuid:1:2>\nauthor b\n");
    const auto model = std::make_shared<ZLMModel>();
    hidesTypes = true;
    EXPECT_EQ(folder.Load(*model), "");
    hidesTypes = false;
    EXPECT_EQ(model->Bogies->Item(1)->Author, u"b");
}

TEST(DiskFileSystem, ThrowsIfDescriptorsRunOut)
{
    if (kIsAddressSanitized)
        GTEST_SKIP() << "the sanitizers need descriptors of their own";
    AssetFolder folder;
    folder.Wagon("bogey <kuid:1:2>\n").Write("b/config.txt", "kuid <kuid:1:2>\nauthor b\n");
    const auto model = std::make_shared<ZLMModel>();
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &old), 0);
    const int next = ::open("/", O_RDONLY | O_CLOEXEC);
    ::close(next);
    // With 0 descriptors left the config can't be opened, with 1 its folders can't be listed.
    for (int left = 0; left < 4; ++left)
    {
        SCOPED_TRACE(left);
        const rlimit few = {static_cast<rlim_t>(next + left), old.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        const std::string raised = folder.Load(*model);
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &old), 0);
        const bool isEnough = left >= 2;
        EXPECT_EQ(raised, isEnough ? "" : "FileSystemError 57");
        EXPECT_TRUE(!isEnough || model->Bogies->Item(1)->Author == u"b");
    }
}

} // namespace
} // namespace ZLMIM::Testing
