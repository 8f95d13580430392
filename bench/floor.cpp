#include "bench/floor.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace Bench
{

RawFile ReadRawFile(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    struct stat status;
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0)
        throw std::runtime_error("can't open " + path);
    const auto size = static_cast<std::size_t>(status.st_size);
    auto* const bytes = static_cast<unsigned char*>(std::malloc(size));
    for (std::size_t there = 0; bytes && there < size;)
    {
        const ssize_t taken = ::read(descriptor, bytes + there, size - there);
        if (taken <= 0)
            throw std::runtime_error("can't read " + path);
        there += static_cast<std::size_t>(taken);
    }
    ::close(descriptor);
    return {bytes, size};
}

void CopyRuns(const RawFile& file, const std::vector<FileRun>& runs, std::vector<void*>& arrays)
{
    for (const FileRun& run : runs)
    {
        void* const array = std::malloc(run.isWidened ? 2 * run.bytes : run.bytes);
        arrays.push_back(array);
        if (!run.isWidened)
        {
            std::memcpy(array, file.bytes + run.offset, run.bytes);
            continue;
        }
        auto* const wide = static_cast<std::int32_t*>(array);
        for (std::size_t i = 0; i < run.bytes / 2; ++i)
        {
            std::int16_t narrow = 0;
            std::memcpy(&narrow, file.bytes + run.offset + 2 * i, sizeof(narrow));
            wide[i] = narrow;
        }
    }
}

void FreeAll(const std::vector<void*>& arrays)
{
    for (void* const array : arrays)
        std::free(array);
}

} // namespace Bench
