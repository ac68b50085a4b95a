// The second peer of the rasterizer: Mesa's software renderer, where it is installed.
#pragma once

#include "bench_scenes.h"

#include <string>

// What the ways of this peer begin with. Of those of a scenario the fastest counts.
constexpr auto kMesaPeer = "Mesa";

// One sentence on what was measured, or why nothing was.
std::string MesaNote();

// What Mesa draws first. The objects are sorted before any time is taken.
enum class MesaOrder { AsInScene, NearestFirst };

void RegisterMesaBenchmarks(const BenchScene& scene, MesaOrder order);
