#define ZEL_LANES 8
#include "render/raster/kernels_of_width.h"

const RasterKernels& KernelsAvx2() { return kKernels; }
