#include "parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace ZLMIM::Validate
{

void ForEach(std::size_t count, unsigned threads,
             const std::function<void(std::size_t index, std::size_t worker)>& work)
{
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    std::exception_ptr raised;
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
            if (!raised)
                raised = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> helpers;
        const std::size_t wanted = std::min<std::size_t>(count, threads);
        helpers.reserve(wanted);
        try
        {
            for (std::size_t worker = 1; worker < wanted; ++worker)
                helpers.emplace_back(run, worker);
        }
        catch (const std::system_error&)
        {
            // Those that have started, and this one, will do.
        }
        run(0);
    }
    if (raised)
        std::rethrow_exception(raised);
}

} // namespace ZLMIM::Validate
