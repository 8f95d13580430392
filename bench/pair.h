#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace Bench
{

/// One side of a case: does its work once and returns the time that it took, in seconds. The time excludes
/// preparation and freeing the result.
using Side = std::function<double()>;

/// The library's work, and the least that any program must do for the same result.
struct Case
{
    std::string name;
    Side library;
    Side floor;
    /// The goal: the highest acceptable ratio of the two.
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

/// Runs both sides alternately, `pairs` times after two warm-up rounds. Each run has a forked child of its
/// own, so that neither side benefits from memory that the other has touched.
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

/// Keeps the compiler from optimising away an unused result.
inline void Keep(const void* made) { asm volatile("" : : "g"(made) : "memory"); }

} // namespace Bench
