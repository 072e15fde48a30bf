// SPDX-License-Identifier: MIT
// Statistics, and the printed table.

#include "Report.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <utility>

namespace kx::bench {

double Percentile(std::vector<double> values, double share) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<size_t>(std::lround(share * last))];
}

double Median(std::vector<double> values) { return Percentile(std::move(values), 0.5); }

TRow ComparePairs(const std::string& what, const std::vector<double>& ours, const std::string& against,
                  const std::vector<double>& reference, const std::string& unit, double limit) {
    std::vector<double> ratios;
    for (size_t i = 0; i < ours.size() && i < reference.size(); ++i) {
        ratios.push_back(ours[i] / reference[i]);
    }
    return {what, Median(ours), against, Median(reference), unit, limit, Median(ratios)};
}

void Print(const std::vector<TRow>& rows) {
    std::printf("\n%-46s %12s   %-34s %12s %8s %7s\n", "what", "ours", "against", "", "ratio", "limit");
    for (const TRow& row : rows) {
        std::printf("%-46s %9.3f %-2s   %-34s %9.3f %-2s %7.2f %7.2f  %s\n", row.What.c_str(), row.Ours,
                    row.Unit.c_str(), row.Against.c_str(), row.Reference, row.Unit.c_str(), row.Ratio(), row.Limit,
                    row.IsWithinLimit() ? "ok" : "OVER");
    }
}

double Now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

} // namespace kx::bench
