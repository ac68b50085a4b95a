#define ZEL_LANES 1
#include "render/raster/kernels_of_width.h"

const RasterKernels& KernelsOneLane() { return kKernels; }
