// How measurements are named and shown: every scenario against its peer.
#pragma once

#include <string>

// The way that the others of a scenario are compared with: the plain renderer, or the bare bytes.
constexpr auto kPeer = "peer";

// "scenario: way".
std::string BenchName(const std::string& scenario, const std::string& way);

void RegisterPlayBenchmarks();
void RegisterRasterizerBenchmarks();
void RegisterScaleBenchmarks();
void RegisterSceneFileBenchmarks();
void RegisterUndoBenchmarks();
