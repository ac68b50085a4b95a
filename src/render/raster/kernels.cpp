#include "render/raster/kernels.h"

const RasterKernels& KernelsOf(SimdLevel level) {
    switch (level) {
        case SimdLevel::Avx512: return KernelsAvx512();
        case SimdLevel::Avx2: return KernelsAvx2();
        case SimdLevel::Sse2: return KernelsSse2();
        case SimdLevel::OneLane: break;
    }
    return KernelsOneLane();
}
