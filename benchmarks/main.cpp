// Runs every benchmark, then prints a table of ratios: how many times as fast as its peer each way is, both
// measured in this run.
#include "bench_report.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>

std::string BenchName(const std::string& scenario, const std::string& way) { return scenario + ": " + way; }

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const std::string name = run.benchmark_name();
            const size_t split = name.find(": ");
            if (run.error_occurred || split == std::string::npos) continue;
            rows.push_back({name.substr(0, split), name.substr(split + 2), run.GetAdjustedRealTime()});
            if (rows.back().way == kPeer) peers[rows.back().scenario] = rows.back().milliseconds;
        }
    }

    void PrintRatios() const {
        std::printf("\n%-28s %-14s %12s %14s\n", "scenario", "way", "ms", "times as fast");
        for (const Row& row : rows) {
            const auto peer = peers.find(row.scenario);
            if (peer == peers.end()) continue;
            std::printf("%-28s %-14s %12.3f %14.2f\n", row.scenario.c_str(), row.way.c_str(),
                        row.milliseconds, peer->second / row.milliseconds);
        }
    }

private:
    struct Row {
        std::string scenario{}, way{};
        double milliseconds = 0;
    };
    std::vector<Row> rows{};
    std::map<std::string, double> peers{};
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RegisterPlayBenchmarks();
    RegisterRasterizerBenchmarks();
    RegisterSceneFileBenchmarks();
    RegisterUndoBenchmarks();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}
