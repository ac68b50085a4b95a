// How measurements are named and shown: every scenario against its peer.
#pragma once

#include <benchmark/benchmark.h>

#include <time.h>
#include <algorithm>
#include <limits>
#include <string>

// The way that the others of a scenario are compared with: the plain renderer, or the bare bytes.
constexpr auto kPeer = "peer";

// "scenario: way".
std::string BenchName(const std::string& scenario, const std::string& way);

// The counter that holds the shortest time of one round, ms of the thread that runs it. Where it is there, it
// counts in place of the mean: on a machine that others share, the mean says how busy they were.
constexpr auto kBest = "best";

constexpr double kLongEnough = 0.4;  // seconds, to meet a moment in which the machine is free

// How long this thread has run, ms: time that other programs took is not in it.
inline double ThreadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

template <typename Round>
void MeasureBest(benchmark::State& state, Round round) {
    double best = std::numeric_limits<double>::max();
    for ([[maybe_unused]] auto repetition : state) {
        const double start = ThreadMilliseconds();
        round();
        best = std::min(best, ThreadMilliseconds() - start);
    }
    state.counters[kBest] = best;
}

void RegisterPlayBenchmarks();
void RegisterRasterizerBenchmarks();
void RegisterScaleBenchmarks();
void RegisterRecoveryBenchmarks();
void RegisterSceneFileBenchmarks();
void RegisterUndoBenchmarks();
