#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
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
    /// The goal: the highest acceptable ratio of the two. Without one the ratio is printed for comparison.
    std::optional<double> wanted = {};
};

/// The same work at one size.
struct Sized
{
    /// How many units both sides load in all.
    double units = 0;
    Side library;
    Side floor;
};

/// How the time per unit grows, at 1, 10 and 100 times the size.
struct Growth
{
    /// What grows, with its sizes.
    std::string name;
    std::string unit;
    std::array<Sized, 3> sizes;
};

/// Another program's reader, for comparison.
struct Peer
{
    std::string name;
    /// What it does in the time.
    std::string work;
    /// Bytes of the arrays in the file.
    double bytes = 0;
    /// Null if it isn't installed.
    Side load;
    /// Copies the same arrays.
    Side floor;
};

/// What is measured with the same generated files.
struct Measures
{
    std::vector<Case> cases = {};
    std::vector<Growth> growths = {};
    std::vector<Peer> peers = {};
};

struct Result
{
    /// Median of the pairs' ratios, library to floor.
    double ratio = 0;
    /// Medians in seconds.
    double library = 0;
    double floor = 0;
};

/// Runs both sides alternately, `pairs` times after a warm-up round, but starts no further pair after 20
/// seconds. A warm-up that takes so long counts. Each run has a forked child of its own, so that neither side
/// benefits from memory that the other has touched.
/// @throws std::runtime_error if a child fails.
[[nodiscard]] Result RunPairs(const Side& library, const Side& floor, int pairs);

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
