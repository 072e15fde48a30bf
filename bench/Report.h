// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kx::bench {

/// One line of the table: what was measured, ours beside what it is held against, and how much more ours may cost.
struct TRow {
    std::string What;
    double Ours; ///< In `Unit`.
    std::string Against;
    double Reference; ///< In `Unit`.
    std::string Unit;
    double Limit;     ///< Of ours / reference.
    double Pairs = 0; ///< Median ratio of what was measured in pairs, which drifts less; 0: it was not.

    double Ratio() const { return Pairs > 0 ? Pairs : Ours / Reference; }
    bool IsWithinLimit() const { return Ratio() <= Limit; }
};

double Median(std::vector<double> values);
double Percentile(std::vector<double> values, double share); ///< `share` from 0 to 1.
/// The row of what was measured in pairs, one of ours and one of the reference's in turn: the medians of both, and of
/// the ratios in the pairs.
TRow ComparePairs(const std::string& what, const std::vector<double>& ours, const std::string& against,
                  const std::vector<double>& reference, const std::string& unit, double limit);

/// Prints the table, each row with its ratio and whether it keeps its limit.
void Print(const std::vector<TRow>& rows);

/// Seconds since some fixed moment.
double Now();

} // namespace kx::bench
