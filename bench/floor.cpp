#include "bench/floor.h"

#include "zlmim/model/records.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Bench
{
namespace
{

using ZLMIM::Keyframe;

void Prefault(unsigned char* array, std::size_t bytes)
{
    static const auto kPageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto start = reinterpret_cast<std::uintptr_t>(array) / kPageSize * kPageSize;
    const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(array) + bytes;
    constexpr std::size_t kHugePage = 2 * 1'048'576;
    if (bytes >= kHugePage) // no huge pages on some systems
        static_cast<void>(::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE));
    if (::madvise(reinterpret_cast<void*>(start), end - start, MADV_POPULATE_WRITE) != 0)
        throw std::runtime_error("can't prefault pages");
}

/// Reads the file to its end, and closes it.
RawFile ReadAndClose(int descriptor, const std::string& path, Pages pages)
{
    struct stat status;
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0)
        throw std::runtime_error("can't open " + path);
    const auto size = static_cast<std::size_t>(status.st_size);
    RawFile file = {NewArray(size, pages), size};
    for (std::size_t there = 0; there < size;)
    {
        const ssize_t taken = ::read(descriptor, file.bytes.get() + there, size - there);
        if (taken <= 0)
            throw std::runtime_error("can't read " + path);
        there += static_cast<std::size_t>(taken);
    }
    ::close(descriptor);
    return file;
}

} // namespace

Array NewArray(std::size_t bytes, Pages pages)
{
    Array array(static_cast<unsigned char*>(std::malloc(bytes)));
    if (!array)
        throw std::bad_alloc();
    if (pages == Pages::Prefaulted)
        Prefault(array.get(), bytes);
    return array;
}

RawFile ReadRawFile(const std::string& path, Pages pages)
{
    return ReadAndClose(::open(path.c_str(), O_RDONLY), path, pages);
}

RawFile ReadRawFileIfThere(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY);
    if (descriptor < 0 && errno == ENOENT)
        return {};
    return ReadAndClose(descriptor, path, Pages::Faulted);
}

void CopyRuns(const RawFile& file, const std::vector<FileRun>& runs, std::vector<Array>& arrays, Pages pages)
{
    for (const FileRun& run : runs)
    {
        const Array& array = arrays.emplace_back(NewArray(run.isWidened ? 2 * run.bytes : run.bytes, pages));
        const unsigned char* const from = file.bytes.get() + run.offset;
        if (!run.isWidened)
        {
            std::memcpy(array.get(), from, run.bytes);
            continue;
        }
        auto* const wide = reinterpret_cast<std::int32_t*>(array.get());
        for (std::size_t i = 0; i < run.bytes / 2; ++i)
        {
            std::int16_t narrow = 0;
            std::memcpy(&narrow, from + 2 * i, sizeof(narrow));
            wide[i] = narrow;
        }
    }
}

void CopyFrames(const RawFile& file, const MadeAnim& anim, std::vector<Array>& tables, Pages pages)
{
    const std::size_t first = tables.size();
    for (std::size_t b = 0; b < anim.bones; ++b)
        tables.push_back(NewArray((anim.frames + 1) * sizeof(Keyframe), pages));
    const unsigned char* record = file.bytes.get() + anim.firstFrame;
    for (std::size_t f = 0; f < anim.frames; ++f)
    {
        record += MadeAnim::kFrameHead;
        for (std::size_t b = 0; b < anim.bones; ++b)
        {
            std::memcpy(tables[first + b].get() + f * sizeof(Keyframe), record, sizeof(Keyframe));
            record += sizeof(Keyframe);
        }
    }
}

} // namespace Bench
