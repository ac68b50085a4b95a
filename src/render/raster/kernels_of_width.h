// The table of one width. Included by the file of that width only, see lanes.h.
#pragma once

#include "render/raster/depth_kernel.h"
#include "render/raster/faces_kernel.h"
#include "render/raster/fill_kernel.h"
#include "render/raster/light_kernel.h"
#include "render/raster/vertex_kernel.h"

namespace {

constexpr RasterKernels kKernels{kLanes,         TransformAll, FindFronts,     Scan,
                                 LightAll,       FillFlat,     FillTextured,   CoversPixel,
                                 CoveredColumns, ClearBlock,   FarthestOfBlock};

}  // namespace
