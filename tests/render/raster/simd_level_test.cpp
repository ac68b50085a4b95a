#include "render/raster/simd_level.h"

#include "doctest/doctest.h"

#if defined(__GNUC__)

TEST_CASE("the widest registers are used that the compiler's own question finds") {
    __builtin_cpu_init();
    const bool hasAvx2 =
        __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("popcnt");
    const bool hasAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
    const SimdLevel widest = !hasAvx2 ? SimdLevel::Sse2 : hasAvx512 ? SimdLevel::Avx512 : SimdLevel::Avx2;
    CHECK(NameOf(BestSimdLevel()) == NameOf(widest));
}

#endif
