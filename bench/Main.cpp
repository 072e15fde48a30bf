// SPDX-License-Identifier: MIT
// Benchmarks. Each figure stands beside what it is held against, measured in the same run: only the ratios mean
// something on another machine.

#include "Benches.h"
#include "kx/ui/forms/Forms.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

namespace kx::bench {

namespace {

constexpr struct {
    const char* Name;
    std::vector<TRow> (*Measure)();
} groups[] = {{"paint", MeasureFirstPaint}, {"memory", MeasureMemory},       {"message", MeasureNullMessage},
              {"forms", MeasureForms},      {"places", MeasurePlaces},       {"bar", MeasurePlacesBar},
              {"list", MeasureFileList},    {"folder", MeasureFolderDialog}, {"color", MeasureColor},
              {"print", MeasurePrint},      {"designer", MeasureDesigner}};

/// Measures the groups that are named; all, when none is. 1 when a row is over its limit.
int Run(std::span<char*> names) {
    const auto isNamed = [&](std::string_view group) {
        return names.empty() || std::find(names.begin(), names.end(), group) != names.end();
    };
    std::vector<TRow> rows;
    std::printf("measuring on %zu-bit code ...\n", sizeof(void*) * 8);
    for (const auto& group : groups) {
        if (isNamed(group.Name)) {
            const std::vector<TRow> more = group.Measure();
            rows.insert(rows.end(), more.begin(), more.end());
        }
    }
    if (rows.empty()) {
        std::printf("the groups are:");
        for (const auto& group : groups) {
            std::printf(" %s", group.Name);
        }
        std::printf("\n");
        return 1;
    }
    Print(rows);
    return std::ranges::all_of(rows, &TRow::IsWithinLimit) ? 0 : 1;
}

} // namespace

} // namespace kx::bench

int main(int count, char** arguments) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (count == 3 && std::string_view(arguments[1]) == "shows") {
        return kx::bench::ShowForMemory(arguments[2]);
    }
    return kx::bench::Run({arguments + 1, arguments + count});
}
