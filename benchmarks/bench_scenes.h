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
};

// Made once; the references in them stay valid.
const std::vector<BenchScene>& BenchScenes();
