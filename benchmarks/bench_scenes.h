// The scenes that the rasterizer is measured with.
#pragma once

#include "render/raster/mesh_batch.h"

#include <string>
#include <vector>

// The viewport of the editor at its first window size.
constexpr int32_t kBenchWidth = 810, kBenchHeight = 646;
constexpr Pixel kBenchBackground{0x2D2219};

using BenchObject = MeshInstance;

struct BenchScene {
    std::string name{};
    std::vector<BenchObject> objects{};  // in the order of the scene
    int32_t width = kBenchWidth, height = kBenchHeight;
    Pixel background = kBenchBackground;
};

// Made once; the references in them stay valid.
const std::vector<BenchScene>& BenchScenes();

// What the player sees first of the two sample projects, in windows of three sizes.
const std::vector<BenchScene>& SampleScenes();

// Spheres in a grid, all of them in view. `count` of at most 100,000.
BenchScene SpheresInView(int32_t count);

enum class WallPlace { None, First, Last };

// 10,000 spheres, and a wall that hides all of them: nowhere, first in the scene or last.
BenchScene SpheresBehindWall(WallPlace place);
