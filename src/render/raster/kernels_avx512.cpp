#define ZEL_LANES 16
#include "render/raster/kernels_of_width.h"

const RasterKernels& KernelsAvx512() { return kKernels; }
