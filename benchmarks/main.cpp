// Runs every benchmark, then prints a table of ratios: how many times as fast as its peers each way is, all
// measured in this run.
#include "bench_report.h"
#include "mesa_bench.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>

std::string BenchName(const std::string& scenario, const std::string& way) { return scenario + ": " + way; }

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const std::string& name = run.run_name.function_name;
            const size_t split = name.find(": ");
            if (run.error_occurred || split == std::string::npos) continue;
            const auto best = run.counters.find(kBest);
            const double time = best != run.counters.end() ? best->second.value : run.GetAdjustedRealTime();
            Note({name.substr(0, split), name.substr(split + 2), time});
        }
    }

    void PrintRatios() const {
        std::printf("\n%-28s %-16s %12s   %s\n", "", "", "", "times as fast as");
        std::printf("%-28s %-16s %12s %10s %10s\n", "scenario", "way", "ms", kPeer, kMesaPeer);
        for (const Row& row : rows) {
            const auto peer = peers.find(row.scenario);
            if (peer == peers.end()) continue;
            std::printf("%-28s %-16s %12.3f %10.2f %10s\n", row.scenario.c_str(), row.way.c_str(),
                        row.milliseconds, peer->second / row.milliseconds, TimesMesa(row).c_str());
        }
        std::printf("\n%s\n", MesaNote().c_str());
    }

private:
    struct Row {
        std::string scenario{}, way{};
        double milliseconds = 0;
    };

    // What is measured several times counts with the least.
    void Note(const Row& row) {
        const auto known = std::ranges::find_if(rows, [&row](const Row& other) {
            return other.scenario == row.scenario && other.way == row.way;
        });
        if (known == rows.end()) {
            rows.push_back(row);
        } else {
            known->milliseconds = std::min(known->milliseconds, row.milliseconds);
        }
        if (row.way == kPeer) KeepLeast(peers, row);
        if (row.way.starts_with(kMesaPeer)) KeepLeast(mesaPeers, row);
    }

    static void KeepLeast(std::map<std::string, double>& times, const Row& row) {
        const auto [known, isNew] = times.try_emplace(row.scenario, row.milliseconds);
        if (!isNew) known->second = std::min(known->second, row.milliseconds);
    }

    std::string TimesMesa(const Row& row) const {
        const auto mesa = mesaPeers.find(row.scenario);
        if (mesa == mesaPeers.end()) return "-";
        char ratio[32];
        std::snprintf(ratio, sizeof ratio, "%.2f", mesa->second / row.milliseconds);
        return ratio;
    }

    std::vector<Row> rows{};
    std::map<std::string, double> peers{}, mesaPeers{};
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    RegisterPlayBenchmarks();
    RegisterScaleBenchmarks();
    RegisterRecoveryBenchmarks();
    RegisterSceneFileBenchmarks();
    RegisterUndoBenchmarks();
    RegisterRasterizerBenchmarks();  // the last: a peer changes how memory is kept
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    return 0;
}
