#ifndef ZLMIM_BENCH_REPORT_H
#define ZLMIM_BENCH_REPORT_H

#include "bench/pair.h"

#include <sstream>

namespace Bench
{

/// Measures, and prints the results as tables in Markdown.
class Report
{
public:
    /// Prints the heading, which names the processor.
    explicit Report(int pairs);

    /// Prints a row for each case at once, and keeps the other rows for `Finish`. A case that misses its goal
    /// by more than a tenth is run up to three times, and the lowest ratio counts.
    void Run(const Measures& measures);
    /// Prints the tables of growths and peers, as far as they have rows.
    void Finish() const;

    /// Whether no goal was missed by more than a tenth.
    [[nodiscard]] bool IsGood() const { return mIsGood; }

private:
    void Run(const Case& benchCase);
    void Run(const Growth& growth);
    void Run(const Peer& peer);

    int mPairs;
    bool mIsGood = true;
    std::ostringstream mGrowths;
    std::ostringstream mPeers;
};

} // namespace Bench

#endif
