#include "tools/common/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace ZLMIM::Tools
{

void ForEach(std::size_t count, unsigned threads,
             const std::function<void(std::size_t index, std::size_t worker)>& work)
{
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    std::exception_ptr thrown;
    const auto run = [&](std::size_t worker)
    {
        try
        {
            for (std::size_t index = next++; index < count; index = next++)
                work(index, worker);
        }
        catch (...)
        {
            next = count;
            const std::lock_guard lock(mutex);
            if (!thrown)
                thrown = std::current_exception();
        }
    };
    const std::size_t workers = std::min<std::size_t>(count, threads);
    std::vector<std::thread> others;
    try
    {
        others.reserve(workers);
        while (others.size() + 1 < workers)
            others.emplace_back(run, others.size() + 1);
    }
    catch (const std::exception&)
    {
        // The system has no memory for another thread, or allows no more: those that there are do the work.
    }
    run(0);
    for (std::thread& other : others)
        other.join();
    if (thrown)
        std::rethrow_exception(thrown);
}

} // namespace ZLMIM::Tools
