// Benchmarks. Each figure stands beside what it is held against, measured in the same run: only the ratios mean
// something on another machine.

#include "ColorPrintBench.h"
#include "FileListBench.h"
#include "FolderDialogBench.h"
#include "FormBench.h"
#include "OpenDialogBench.h"
#include "PlacesBarBench.h"
#include "PlacesBench.h"
#include "ui/Forms.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

namespace kx::bench {

namespace {

std::vector<TRow> MeasureForms() {
    std::vector<TRow> rows;
    for (const bool text : {false, true}) {
        const std::string form = text ? "text" : "binary";
        const auto perComponent = [&](int components) {
            std::vector<double> seconds;
            for (int i = 0; i < 9; ++i) {
                seconds.push_back(ReadFormSeconds(components, text));
            }
            return Median(seconds) / components * 1e6;
        };
        // Linear growth: the cost of one component does not depend on how many there are. The smallest form carries
        // the fixed cost of a reading, so the middle one is the measure.
        const double middle = perComponent(1'000);
        std::printf("  form from %s: 1,000 components in %.2f ms\n", form.c_str(), middle);
        rows.push_back({"component from " + form + ", of 10,000", perComponent(10'000), "of 1,000", middle, "us", 1.3});
        rows.push_back({"component from " + form + ", of 1,000", middle, "of 100", perComponent(100), "us", 1.3});
    }
    return rows;
}

constexpr struct {
    const char* Name;
    std::vector<TRow> (*Measure)();
} groups[] = {{"paint", MeasureFirstPaint},    {"message", MeasureNullMessage}, {"forms", MeasureForms},
              {"places", MeasurePlaces},       {"bar", MeasurePlacesBar},       {"list", MeasureFileList},
              {"folder", MeasureFolderDialog}, {"color", MeasureColor},         {"print", MeasurePrint}};

/// Measures the groups that are named; all, when none is.
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
    return 0;
}

} // namespace

} // namespace kx::bench

int main(int count, char** arguments) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    return kx::bench::Run({arguments + 1, arguments + count});
}
