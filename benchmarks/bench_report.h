// How measurements are named and shown: every scenario against its peer.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>

// The way that the others of a scenario are compared with: the plain renderer, or the bare bytes.
constexpr auto kPeer = "peer";

// "scenario: way".
std::string BenchName(const std::string& scenario, const std::string& way);

// The counter that holds the shortest time of one round, ms. Where it is there, it counts in place of the
// mean: on a machine that others share, the mean says how busy they were.
constexpr auto kBest = "best";

constexpr double kLongEnough = 0.4;  // seconds, to meet a moment in which the machine is free

template <typename Round>
void MeasureBest(benchmark::State& state, Round round) {
    using Clock = std::chrono::steady_clock;
    double best = std::numeric_limits<double>::max();
    for ([[maybe_unused]] auto repetition : state) {
        const Clock::time_point start = Clock::now();
        round();
        best = std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    state.counters[kBest] = best;
}

void RegisterPlayBenchmarks();
void RegisterRasterizerBenchmarks();
void RegisterScaleBenchmarks();
void RegisterSceneFileBenchmarks();
void RegisterUndoBenchmarks();
