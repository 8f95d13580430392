#include "bench/pair.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace Bench
{
namespace
{

double RunInChild(const Side& side)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0)
    {
        try
        {
            const double seconds = side();
            const bool isWritten = ::write(ends[1], &seconds, sizeof(seconds)) == sizeof(seconds);
            std::_Exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
        }
        catch (const std::exception& error)
        {
            std::cerr << error.what() << '\n';
            std::_Exit(EXIT_FAILURE);
        }
    }
    ::close(ends[1]);
    double seconds = 0;
    const bool isRead = ::read(ends[0], &seconds, sizeof(seconds)) == sizeof(seconds);
    ::close(ends[0]);
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0 || !isRead)
        throw std::runtime_error("a measured run failed");
    return seconds;
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

Result RunPairs(const Side& library, const Side& floor, int pairs)
{
    constexpr std::chrono::seconds kLong{20};
    const auto start = std::chrono::steady_clock::now();
    const auto isLate = [&] { return std::chrono::steady_clock::now() - start > kLong; };
    std::vector<double> librarySeconds;
    std::vector<double> floorSeconds;
    std::vector<double> ratios;
    for (int round = 0; round <= pairs && (ratios.empty() || !isLate()); ++round)
    {
        // Each side is first in every other round.
        const bool isFloorFirst = round % 2 == 0;
        const double first = RunInChild(isFloorFirst ? floor : library);
        const double second = RunInChild(isFloorFirst ? library : floor);
        if (round == 0 && !isLate())
            continue;
        librarySeconds.push_back(isFloorFirst ? second : first);
        floorSeconds.push_back(isFloorFirst ? first : second);
        ratios.push_back(librarySeconds.back() / floorSeconds.back());
    }
    return {Median(ratios), Median(librarySeconds), Median(floorSeconds)};
}

} // namespace Bench
