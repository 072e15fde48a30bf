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
    double Limit; ///< Of ours / reference.
};

double Median(std::vector<double> values);
double Percentile(std::vector<double> values, double share); ///< `share` from 0 to 1.

/// Prints the table, each row with its ratio and whether it keeps its limit.
void Print(const std::vector<TRow>& rows);

/// Seconds since some fixed moment.
double Now();

} // namespace kx::bench
