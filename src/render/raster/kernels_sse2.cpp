#define ZEL_LANES 4
#include "render/raster/kernels_of_width.h"

const RasterKernels& KernelsSse2() { return kKernels; }
