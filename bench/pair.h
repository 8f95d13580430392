#ifndef ZLMIM_BENCH_PAIR_H
#define ZLMIM_BENCH_PAIR_H

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace Bench
{

/// One side of a case: does its work once and answers the seconds that it took. What it doesn't time is
/// preparation, or letting go of what it made.
using Side = std::function<double()>;

/// What the library does, beside the least that any program must do for the same.
struct Case
{
    std::string name;
    Side library;
    Side floor;
    /// The wanted ratio of the two: at most this.
    double wanted = 0;
};

struct Result
{
    /// Median of the pairs' ratios, library to floor.
    double ratio = 0;
    /// Medians in seconds.
    double library = 0;
    double floor = 0;
};

/// Runs both sides alternately, `pairs` times behind two rounds that don't count, each in a forked child, so
/// that neither lives on memory that the other has touched.
/// @throws std::runtime_error if a child fails.
[[nodiscard]] Result RunPairs(const Case& benchCase, int pairs);

/// Times one call.
template <class Work>
double Timed(const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Keeps the compiler from leaving out what nobody looks at.
inline void Keep(const void* made) { asm volatile("" : : "g"(made) : "memory"); }

} // namespace Bench

#endif
