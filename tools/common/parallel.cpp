#include "tools/common/parallel.h"

#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>

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
    if (workers <= 1)
    {
        run(0);
    }
    else
    {
        boost::asio::thread_pool pool(workers);
        for (std::size_t worker = 0; worker < workers; ++worker)
            boost::asio::post(pool, [&run, worker] { run(worker); });
        pool.join();
    }
    if (thrown)
        std::rethrow_exception(thrown);
}

} // namespace ZLMIM::Tools
